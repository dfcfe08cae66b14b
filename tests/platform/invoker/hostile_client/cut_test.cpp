// The client goes away at every byte of a request and of an answer.
#include "case_name.h"
#include "hostile_fixture.h"
#include "run_tests.h"

namespace {

struct Ending {
  const char* name;
  Over connection;
  void (Conversation::*end)();
};

void PrintTo(const Ending& ending, std::ostream* stream) { *stream << ending.name; }

class CutConnection : public HostileClient, public testing::WithParamInterface<Ending> {
 protected:
  /// The client reads `count` bytes of a request and goes away.
  void CutRequest(std::size_t count, const std::wstring& request = L"") {
    SetRunningStep("request cut after byte " + std::to_string(count));
    Prepare(GetParam().connection);
    ExpectFailure(
        [count, end = GetParam().end](Conversation& host) {
          host.ReadRequest(count);
          (host.*end)();
        },
        reasons::kClosed, request);
  }

  /// The client sends `count` bytes of an answer with `text` and goes away.
  void CutAnswer(std::size_t count, std::string_view text) {
    SetRunningStep("answer cut after byte " + std::to_string(count));
    Prepare(GetParam().connection);
    ExpectFailure(
        [bytes = AnswerFrame(NextId(), text).substr(0, count), end = GetParam().end](Conversation& host) {
          host.ReadRequest();
          host.Write(bytes);
          (host.*end)();
        },
        reasons::kClosed);
  }
};

TEST_P(CutConnection, AfterEachByteOfARequestIsNoAnswer) {
  std::string request;
  Try([&request](Conversation& host) {
    request = host.ReadRequest();
    host.Close();
  });
  ExpectRecovery();
  for (std::size_t count = 0; count <= request.size() && !HasFailure(); ++count) CutRequest(count);
  ExpectRecovery();
}

// Of a request that is sent in several pieces and does not fit into the pipe.
TEST_P(CutConnection, InALargeRequestIsNoAnswer) {
  constexpr std::size_t kMiB = 1024 * 1024;
  const std::wstring request(2 * kMiB + 1, L'x');
  for (const std::size_t piece : {std::size_t{4096}, std::size_t{65536}, kMiB, 2 * kMiB}) {
    for (const std::size_t count : {piece - 1, piece, piece + 1}) CutRequest(count, request);
  }
  CutRequest(0, request);
  ExpectRecovery();
}

TEST_P(CutConnection, AfterEachByteOfAnAnswerIsNoAnswer) {
  const std::size_t size = AnswerFrame(NextId(), "right").size();
  for (std::size_t count = 0; count < size && !HasFailure(); ++count) CutAnswer(count, "right");
  ExpectRecovery();
}

// Of an answer that is read in several pieces.
TEST_P(CutConnection, InALargeAnswerIsNoAnswer) {
  constexpr std::size_t kMiB = 1024 * 1024;
  const std::string text(2 * kMiB, 'x');
  for (const std::size_t piece :
       {std::size_t{4096}, std::size_t{16384}, std::size_t{65536}, kMiB, 2 * kMiB}) {
    for (const std::size_t count : {piece - 1, piece, piece + 1}) CutAnswer(count, text);
  }
  CutAnswer(AnswerFrame(NextId(), text).size() - 1, text);
  ExpectRecovery();
}

TEST_P(CutConnection, BehindTheWholeAnswerIsOpenedAnew) {
  for (int i = 0; i < 30; ++i) {
    Prepare(GetParam().connection);
    ExpectAnswer(
        [answer = AnswerFrame(NextId(), "right"), end = GetParam().end](Conversation& host) {
          host.ReadRequest();
          host.WriteThrough(answer);
          (host.*end)();
        },
        L"right");
    AwaitClient();  // a request that crosses with the end would be lost
    ExpectRecovery();
  }
}

constexpr Ending kEndings[] = {{"ClosedWhenNew", Over::kFirst, &Conversation::Close},
                               {"ClosedWhenKept", Over::kKept, &Conversation::Close},
                               {"DisconnectedWhenNew", Over::kFirst, &Conversation::Disconnect},
                               {"DisconnectedWhenKept", Over::kKept, &Conversation::Disconnect}};
INSTANTIATE_TEST_SUITE_P(, CutConnection, testing::ValuesIn(kEndings), CaseName<Ending>);

}  // namespace
