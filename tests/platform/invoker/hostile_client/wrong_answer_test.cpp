// Answers that are whole and wrong: one case for each way.
#include "case_name.h"
#include "hostile_fixture.h"

namespace {

constexpr std::size_t k64MiB = 64 * 1024 * 1024;

/// What the client does with a request that has this id.
using ActFor = HostileServer::Act (*)(std::uint64_t id);

struct WrongAnswer {
  const char* name;
  ActFor act;
  std::wstring reason;           // of the failure; empty: the command gets the answer "right"
  Over next_one = Over::kFirst;  // what the next command goes over
};

void PrintTo(const WrongAnswer& wrong, std::ostream* stream) { *stream << wrong.name; }

/// Sends `bytes` and keeps the connection open.
HostileServer::Act Send(std::string bytes) {
  return [bytes = std::move(bytes)](Conversation& host) {
    host.ReadRequest();
    host.Write(bytes);
  };
}

/// Sends `begin` and then `more` until the host has closed the connection. What fits comes in one piece.
HostileServer::Act SendEndlessly(std::string begin, std::string_view more) {
  constexpr std::size_t kBlock = 64 * 1024;
  std::string block;
  while (block.size() < kBlock) block += more;
  begin += block;
  begin.resize(kBlock);
  return [begin = std::move(begin), block = std::move(block)](Conversation& host) {
    host.ReadRequest();
    host.Write(begin);
    while (host.Write(block)) {
    }
  };
}

/// The answer "right" to `id`, which is any JSON.
std::string WithId(const std::string& id) {
  return FrameOf(R"({"jsonrpc":"2.0","id":)" + id + R"(,"result":{"answer":"right"}})");
}

std::string Right(std::uint64_t id) { return AnswerFrame(id, "right"); }

/// The answer "right" in an object that is nested so deep.
std::string Nested(std::uint64_t id, std::size_t levels) {
  return FrameOf(R"({"jsonrpc":"2.0","id":)" + std::to_string(id) + R"(,"more":)" +
                 std::string(levels - 1, '[') + std::string(levels - 1, ']') +
                 R"(,"result":{"answer":"right"}})");
}

class WrongAnswers : public HostileClient, public testing::WithParamInterface<WrongAnswer> {};

TEST_P(WrongAnswers, EndOneCommandAndNotTheNext) {
  const auto& [name, act, reason, next_one] = GetParam();
  for (const Over connection : {Over::kFirst, Over::kKept, Over::kKept}) {
    Prepare(connection);
    if (reason.empty()) {
      ExpectAnswer(act(NextId()), L"right");
    } else {
      ExpectFailure(act(NextId()), reason);
    }
    AwaitClient();
    const int connections = Connections();
    ExpectRecovery();
    EXPECT_EQ(Connections(), connections + (next_one == Over::kFirst ? 1 : 0));
  }
}

constexpr char kNotification[] = R"({"jsonrpc":"2.0","method":"progress","params":{"percent":1}})";

const WrongAnswer kIds[] = {
    {"IdOneLess", [](auto id) { return Send(WithId(std::to_string(id - 1))); }, reasons::kOtherId},
    {"IdOneMore", [](auto id) { return Send(WithId(std::to_string(id + 1))); }, reasons::kOtherId},
    {"IdNegative", [](auto id) { return Send(WithId("-" + std::to_string(id))); }, reasons::kOtherId},
    {"IdAndAHalf", [](auto id) { return Send(WithId(std::to_string(id) + ".5")); }, reasons::kOtherId},
    {"IdTimesTen", [](auto id) { return Send(WithId(std::to_string(id) + "e1")); }, reasons::kOtherId},
    {"IdBeyond64Bits",
     [](auto id) { return Send(WithId("1844674407370955161" + std::to_string(6 + id % 4))); },
     reasons::kOtherId},
    {"IdBeyondADouble", [](auto) { return Send(WithId("1e999")); }, reasons::kNotJson},
    {"IdNull", [](auto) { return Send(WithId("null")); }, reasons::kOtherId},
    {"IdTrue", [](auto) { return Send(WithId("true")); }, reasons::kOtherId},
    {"IdAsText", [](auto id) { return Send(WithId("\"" + std::to_string(id) + "\"")); }, reasons::kOtherId},
    {"IdInAnArray", [](auto id) { return Send(WithId("[" + std::to_string(id) + "]")); }, reasons::kOtherId},
    {"IdInAnObject", [](auto id) { return Send(WithId("{\"id\":" + std::to_string(id) + "}")); },
     reasons::kOtherId},
    {"IdMissing", [](auto) { return Send(FrameOf(R"({"jsonrpc":"2.0","result":{"answer":"right"}})")); },
     reasons::kOtherId},
    {"SecondOfTwoIds", [](auto id) { return Send(WithId("0,\"id\":" + std::to_string(id))); },
     reasons::kOtherId},
};
INSTANTIATE_TEST_SUITE_P(WithOtherId, WrongAnswers, testing::ValuesIn(kIds), CaseName<WrongAnswer>);

const WrongAnswer kMessages[] = {
    {"Twice", [](auto id) { return Send(Right(id) + Right(id)); }, L""},
    {"TwiceWithTheNextId", [](auto id) { return Send(Right(id) + AnswerFrame(id + 1, "wrong")); }, L""},
    {"ByteBehind", [](auto id) { return Send(Right(id) + "C"); }, L""},
    {"SecondAnswerLater",
     [](auto id) -> HostileServer::Act {
       return [id](Conversation& host) {
         host.ReadRequest();
         host.WriteThrough(Right(id));
         host.WriteThrough(AnswerFrame(id + 1, "wrong"));
       };
     },
     L""},
    {"Notification", [](auto) { return Send(FrameOf(kNotification)); }, reasons::kOwnMessage},
    {"NotificationFirst", [](auto id) { return Send(FrameOf(kNotification) + Right(id)); },
     reasons::kOwnMessage},
    {"RequestWithTheId",
     [](auto id) {
       return Send(FrameOf(R"({"jsonrpc":"2.0","id":)" + std::to_string(id) + R"(,"method":"ask"})"));
     },
     reasons::kOwnMessage},
    {"AnswerThatIsARequestToo",
     [](auto id) {
       return Send(FrameOf(R"({"jsonrpc":"2.0","method":"ask","id":)" + std::to_string(id) +
                           R"(,"result":{"answer":"right"}})"));
     },
     reasons::kOwnMessage},
    {"EmptyFrame", [](auto) { return Send(FrameOf("")); }, reasons::kNotJson},
    {"EmptyFrameFirst", [](auto id) { return Send(FrameOf("") + Right(id)); }, reasons::kNotJson},
    {"Batch", [](auto) { return Send(FrameOf("[]")); }, reasons::kNotRpc},
    {"NullBehindTheMessage",
     [](auto id) {
       std::string frame = Right(id);
       return Send(FrameOf(frame.substr(frame.find('{')) + std::string(1, '\0')));
     },
     reasons::kNotJson},
    {"1000Levels", [](auto id) { return Send(Nested(id, 1'000)); }, L"", Over::kKept},
    {"1001Levels", [](auto id) { return Send(Nested(id, 1'001)); }, reasons::kNotJson},
    {"AMillionLevels", [](auto id) { return Send(Nested(id, 1'000'000)); }, reasons::kNotJson},
    {"AMillionOpenLevels", [](auto) { return Send(FrameOf(std::string(1'000'000, '['))); },
     reasons::kNotJson},
};
INSTANTIATE_TEST_SUITE_P(AsAMessage, WrongAnswers, testing::ValuesIn(kMessages), CaseName<WrongAnswer>);

const WrongAnswer kFloods[] = {
    {"OfOneHeaderLine", [](auto) { return SendEndlessly("", "x"); }, reasons::kHeaderTooLong},
    {"OfHeaderLines", [](auto) { return SendEndlessly("Content-Length: 2\r\n", "X-Fill: x\r\n"); },
     reasons::kHeaderTooLong},
    {"OfLineEnds", [](auto) { return SendEndlessly("", "\r\n"); }, reasons::kNoLength},
    {"OfNulls", [](auto) { return SendEndlessly("", std::string_view("\0", 1)); }, reasons::kHeader},
    {"OfBlanksInALength", [](auto) { return SendEndlessly("Content-Length: ", " "); },
     reasons::kHeaderTooLong},
    {"OfDigitsInALength", [](auto) { return SendEndlessly("Content-Length: ", "0"); },
     reasons::kHeaderTooLong},
    {"OfNotifications", [](auto) { return SendEndlessly("", FrameOf(kNotification)); }, reasons::kOwnMessage},
    {"OfEmptyFrames", [](auto) { return SendEndlessly("", FrameOf("")); }, reasons::kNotJson},
    {"OfNotificationsBehindTheAnswer",
     [](auto id) { return SendEndlessly(Right(id), FrameOf(kNotification)); }, L""},
    {"OfAnswers", [](auto id) { return SendEndlessly("", Right(id)); }, L""},
    {"OfBytesBehindTheAnswer", [](auto id) { return SendEndlessly(Right(id), "x"); }, L""},
    {"OfBytesInALargeFrame",
     [](auto) { return SendEndlessly("Content-Length: " + std::to_string(k64MiB) + "\r\n\r\n", "["); },
     reasons::kNotJson},
};
INSTANTIATE_TEST_SUITE_P(AsAFlood, WrongAnswers, testing::ValuesIn(kFloods), CaseName<WrongAnswer>);

/// A header with "Content-Length:" and `value`, and the right message.
HostileServer::Act SendWithLength(std::uint64_t id, const std::string& value) {
  const std::string frame = Right(id);
  return Send("Content-Length:" + value + frame.substr(frame.find("\r\n")));
}

const WrongAnswer kLengths[] = {
    {"OneMoreThan64MiB", [](auto id) { return SendWithLength(id, " 67108865"); }, reasons::kTooLong},
    {"Of32Bits", [](auto id) { return SendWithLength(id, " 4294967295"); }, reasons::kTooLong},
    {"Of64Bits", [](auto id) { return SendWithLength(id, " 18446744073709551615"); }, reasons::kTooLong},
    {"OneMoreThan64Bits", [](auto id) { return SendWithLength(id, " 18446744073709551616"); },
     reasons::kTooLong},
    {"ThatWrapsToAFewBytes", [](auto id) { return SendWithLength(id, " 18446744073709551668"); },
     reasons::kTooLong},
    {"Negative", [](auto id) { return SendWithLength(id, " -52"); }, reasons::kLength},
    {"Empty", [](auto id) { return SendWithLength(id, ""); }, reasons::kLength},
    {"InHexadecimal", [](auto id) { return SendWithLength(id, " 0x34"); }, reasons::kLength},
    {"WithAFraction", [](auto id) { return SendWithLength(id, " 52.0"); }, reasons::kLength},
    {"WithAnExponent", [](auto id) { return SendWithLength(id, " 52e0"); }, reasons::kLength},
    {"WithAList", [](auto id) { return SendWithLength(id, " 52, 52"); }, reasons::kLength},
    {"Twice", [](auto id) { return SendWithLength(id, " 52\r\nContent-Length: 52"); }, reasons::kTwoLengths},
    {"OfZero", [](auto id) { return SendWithLength(id, " 0"); }, reasons::kNotJson},
    {"OneTooSmall",
     [](auto id) { return SendWithLength(id, std::to_string(Right(id).size() - Right(id).find('{') - 1)); },
     reasons::kNotJson},
};
INSTANTIATE_TEST_SUITE_P(WithALength, WrongAnswers, testing::ValuesIn(kLengths), CaseName<WrongAnswer>);

}  // namespace
