// Who serves the pipe's name: somebody else, two clients, one that dies.
#include <windows.h>

#include <atomic>
#include <functional>
#include <future>
#include <optional>

#include "CStringHelper.h"
#include "case_name.h"
#include "import_patch.h"
#include "start_fixture.h"
#include "system_function.h"

using plm_client::Reply;
using plm_client::Request;

namespace {

constexpr wchar_t kOfAnotherUser[] = L"O:BAD:P(A;;GA;;;WD)";
constexpr std::size_t kLinesOfAStart = 3;

class PipeName : public ClientStart {
 protected:
  PipeName() { running = this; }

  /// Serves the pipe in this process, in place of the program.
  void TakeName(const wchar_t* security = L"") {
    m_client.emplace(plm_client::Settings{.pipe = m_pipe, .security = security},
                     [](const Request&, std::stop_token) { return Reply::Text("served by another"); });
  }

  /// How many processes of the program there were, as soon as there are `count`.
  std::size_t Starts(std::size_t count) const {
    for (int i = 0; i < 500 && Found().size() < count * kLinesOfAStart; ++i) Sleep(10);
    return Found().size() / kLinesOfAStart;
  }

  /// Is called between the host's look for the pipe and the start of the program.
  std::function<void()> m_beforeStart = [] {};

 private:
  static BOOL WINAPI Start(LPCWSTR program, LPWSTR command_line, LPSECURITY_ATTRIBUTES process,
                           LPSECURITY_ATTRIBUTES thread, BOOL inherits, DWORD flags, LPVOID environment,
                           LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION started) {
    running->m_beforeStart();
    return kCreateProcess(program, command_line, process, thread, inherits, flags, environment, folder,
                          startup, started);
  }

  static inline const auto kCreateProcess =
      SystemFunction<decltype(CreateProcessW)>(L"kernel32.dll", "CreateProcessW");
  static inline PipeName* running;
  const ImportPatch m_patch{GetModuleHandleW(nullptr), "CreateProcessW", &Start};
};

TEST_F(PipeName, TakenByAnotherUserBeforeTheProgramStartsIsFreeAfterThatOneLeft) {
  Install("serve");
  TakeName(kOfAnotherUser);
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the pipe belongs to another user");
  EXPECT_TRUE(m_client->Requests().empty());
  EXPECT_TRUE(Found().empty());

  m_client.reset();
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
}

TEST_F(PipeName, TakenByAnotherUserWhileTheProgramStartsGetsNoRequest) {
  Install("serve");
  m_beforeStart = [this] { TakeName(kOfAnotherUser); };
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the pipe belongs to another user");
  EXPECT_TRUE(m_client->Requests().empty());
  EXPECT_EQ(Starts(1), 1u);

  m_beforeStart = [] {};
  m_client.reset();
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
}

TEST_F(PipeName, TakenByAnotherClientOfTheUserWhileTheProgramStartsIsUsed) {
  Install("serve");
  m_beforeStart = [this] { TakeName(); };
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served by another");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(PipeName, TakenByAnotherUserAfterTheClientDiedGetsNoRequest) {
  Install("serve");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  KillClients();
  TakeName(kOfAnotherUser);
  EXPECT_EQ(InvokeUnreached(L"QD_PLMQuery"), L"");
  ExpectOneLine(L"QD_PLMQuery", L"the pipe belongs to another user");
  EXPECT_TRUE(m_client->Requests().empty());
}

TEST_F(PipeName, ThatTwoHostsMissAtTheSameTimeIsServedToBoth) {
  // given two hosts that both start the program before it serves the pipe
  Install("serve");
  CZALCmdInvoker other(L"Test", L"");
  std::future<std::wstring> of_other;
  std::atomic<bool> first = true;
  m_beforeStart = [&] {
    if (!first.exchange(false)) return;  // this start is the other host's
    of_other = std::async(std::launch::async, [&] { return other.Invoke(L"QD_PLMQuery", L""); });
    Starts(1);
  };

  // when one of the two programs cannot make the pipe
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_EQ(of_other.get(), L"served");

  EXPECT_EQ(Starts(2), 2u);
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(PipeName, OfAClientThatWasKilledWhileIdleIsServedByTheNextOne) {
  Install("serve");
  for (std::size_t round = 1; round <= 3; ++round) {
    EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
    EXPECT_EQ(Starts(round), round);
    KillClients();
  }
  TakeName();
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served by another");
  EXPECT_TRUE(PlatformLines().empty());
}

struct Death {
  const char* verb;
  const char* name;
};

void PrintTo(const Death& death, std::ostream* stream) { *stream << death.name; }

class DyingClient : public PipeName, public testing::WithParamInterface<Death> {};

TEST_P(DyingClient, EndsOneCommandAndIsStartedAgain) {
  Install(GetParam().verb);
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), 600 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", L"the client has closed the connection");

  m_folder.Write(kFolder + LR"(\behaviour.txt)", "serve " + CStringHelper::UnicodeToUTF8(m_pipe));
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_EQ(Starts(2), 2u);
}

constexpr Death kDeaths[] = {{"die", "BeforeTheAnswer"}, {"die-in-the-answer", "InTheAnswer"}};
INSTANTIATE_TEST_SUITE_P(, DyingClient, testing::ValuesIn(kDeaths), CaseName<Death>);

TEST_F(PipeName, OfAClientThatDiesWhileTheBoxIsShownIsServedByTheNextOne) {
  // given a client that is busy with another host
  Install("serve");
  m_client.emplace(plm_client::Settings{.pipe = m_pipe, .instances = 1}, std::ref(m_script));
  CZALCmdInvoker other(L"Test", L"");
  other.Invoke(L"QD_PLMQuery", L"");
  m_boxes.WhileUp([this] { m_client.reset(); });

  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");

  ExpectOneLine(L"QD_PLMLogin", L"stayed busy for two seconds");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
}

}  // namespace
