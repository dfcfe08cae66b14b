#include "message.h"

#include <gtest/gtest.h>

#include "case_name.h"
#include "no_answer.h"

namespace invoker {
namespace {

TEST(MakeRequest, WritesTheTextAsAStringByteForByte) {
  EXPECT_EQ(MakeRequest(7, L"QD_PLMLogin", L""),
            R"({"jsonrpc":"2.0","id":7,"method":"invoke","params":{"command":"QD_PLMLogin","request":""}})");
  EXPECT_EQ(
      MakeRequest(18446744073709551615u, L"a\"b", L"{ \"file_path\" : \"C:\\\\Werk\\\\Ü/测.slddrw\" }\r\n"),
      "{\"jsonrpc\":\"2.0\",\"id\":18446744073709551615,\"method\":\"invoke\",\"params\":{\"command\":"
      "\"a\\\"b\","
      "\"request\":\"{ \\\"file_path\\\" : \\\"C:\\\\\\\\Werk\\\\\\\\\xC3\x9C/\xE6\xB5\x8B.slddrw\\\" "
      "}\\r\\n\"}}");
}

TEST(MakeRequest, KeepsANullCharacter) {
  EXPECT_NE(MakeRequest(1, L"c", std::wstring(L"a\0b", 3)).find(R"("a\u0000b")"), std::string::npos);
}

struct Answer {
  const char* name;
  std::string content;
  std::wstring text;
};

void PrintTo(const Answer& a, std::ostream* stream) { *stream << a.name; }

class Answers : public testing::TestWithParam<Answer> {};

TEST_P(Answers, AreReturnedUnchanged) { EXPECT_EQ(ReadAnswer(GetParam().content, 7), GetParam().text); }

const Answer kAnswers[] = {
    {"Plain", R"({"jsonrpc":"2.0","id":7,"result":{"answer":"{ \"a\" : 1 }"}})", L"{ \"a\" : 1 }"},
    {"Empty", R"({"jsonrpc":"2.0","id":7,"result":{"answer":""}})", L""},
    {"NotJson", R"({"jsonrpc":"2.0","id":7,"result":{"answer":"no json at all"}})", L"no json at all"},
    {"OtherOrderAndMembers",
     R"( { "result" : { "more":[1,{}], "answer":"x" }, "id":7, "extra":null, "jsonrpc":"2.0" } )", L"x"},
    {"Unicode",
     "{\"jsonrpc\":\"2.0\",\"id\":7,\"result\":{\"answer\":\"\xE6\xB5\x8B\\u00fc\\ud83d\\ude00\"}}",
     L"\u6D4B\u00FC\U0001F600"},
    {"NullCharacter", R"({"jsonrpc":"2.0","id":7,"result":{"answer":"a\u0000b"}})", std::wstring(L"a\0b", 3)},
    {"IdAsAFraction", R"({"jsonrpc":"2.0","id":7.0,"result":{"answer":"x"}})", L"x"},
    {"NullError", R"({"jsonrpc":"2.0","id":7,"error":null,"result":{"answer":"x"}})", L"x"},
};
INSTANTIATE_TEST_SUITE_P(, Answers, testing::ValuesIn(kAnswers), CaseName<Answer>);

struct Refusal {
  const char* name;
  std::string content;
  std::wstring reason;
};

void PrintTo(const Refusal& r, std::ostream* stream) { *stream << r.name; }

class Refusals : public testing::TestWithParam<Refusal> {};

TEST_P(Refusals, NameTheReason) {
  try {
    ReadAnswer(GetParam().content, 7);
    ADD_FAILURE() << "the message was taken for an answer";
  } catch (const NoAnswer& refusal) {
    EXPECT_EQ(refusal.reason, GetParam().reason);
  }
}

constexpr wchar_t kNotJson[] = L"the client sent a message that is not valid JSON";
constexpr wchar_t kNotRpc[] = L"the client sent a message that is not JSON-RPC 2.0";
constexpr wchar_t kOwnMessage[] = L"the client sent a request or notification instead of the answer";
constexpr wchar_t kOtherId[] = L"the client's answer does not have the id of the request";
constexpr wchar_t kNoText[] = L"the client's result has no string in \"answer\"";

const Refusal kRefusals[] = {
    {"Nothing", "", kNotJson},
    {"Malformed", R"({"jsonrpc":"2.0","id":7,)", kNotJson},
    {"TextBehind", R"({"jsonrpc":"2.0","id":7,"result":{"answer":"x"}} x)", kNotJson},
    {"NullBehind", R"({"jsonrpc":"2.0","id":7,"result":{"answer":"x"}})" + std::string(1, '\0'), kNotJson},
    {"InvalidUtf8", "{\"jsonrpc\":\"2.0\",\"id\":7,\"result\":{\"answer\":\"\xFF\"}}", kNotJson},
    {"UnpairedSurrogate", R"({"jsonrpc":"2.0","id":7,"result":{"answer":"\ud800"}})", kNotJson},
    {"DeepNesting", std::string(5'000'000, '['), kNotJson},
    {"Array", R"([{"jsonrpc":"2.0","id":7,"result":{"answer":"x"}}])", kNotRpc},
    {"NoVersion", R"({"id":7,"result":{"answer":"x"}})", kNotRpc},
    {"OtherVersion", R"({"jsonrpc":"1.0","id":7,"result":{"answer":"x"}})", kNotRpc},
    {"Notification", R"({"jsonrpc":"2.0","method":"progress","params":{}})", kOwnMessage},
    {"Request", R"({"jsonrpc":"2.0","id":7,"method":"ask"})", kOwnMessage},
    {"OtherId", R"({"jsonrpc":"2.0","id":8,"result":{"answer":"x"}})", kOtherId},
    {"IdAsText", R"({"jsonrpc":"2.0","id":"7","result":{"answer":"x"}})", kOtherId},
    {"NoId", R"({"jsonrpc":"2.0","result":{"answer":"x"}})", kOtherId},
    {"Error", R"({"jsonrpc":"2.0","id":7,"error":{"code":-32601,"message":"no such\nthing"}})",
     L"the client answered with an error -32601: no such thing"},
    {"ErrorAndResult", R"({"jsonrpc":"2.0","id":7,"error":{},"result":{"answer":"x"}})",
     L"the client answered with an error"},
    {"ErrorForNoId", R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"parse error"}})",
     L"the client answered with an error -32700: parse error"},
    {"NoResult", R"({"jsonrpc":"2.0","id":7})", kNoText},
    {"ResultIsText", R"({"jsonrpc":"2.0","id":7,"result":"x"})", kNoText},
    {"ResultIsNull", R"({"jsonrpc":"2.0","id":7,"result":null})", kNoText},
    {"NoAnswer", R"({"jsonrpc":"2.0","id":7,"result":{}})", kNoText},
    {"AnswerIsAnObject", R"({"jsonrpc":"2.0","id":7,"result":{"answer":{"a":1}}})", kNoText},
    {"AnswerIsNull", R"({"jsonrpc":"2.0","id":7,"result":{"answer":null}})", kNoText},
};
INSTANTIATE_TEST_SUITE_P(, Refusals, testing::ValuesIn(kRefusals), CaseName<Refusal>);

}  // namespace
}  // namespace invoker
