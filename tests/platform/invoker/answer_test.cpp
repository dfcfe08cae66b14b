#include "case_name.h"
#include "failing_memory.h"
#include "invoker_fixture.h"

using plm_client::Reply;
using namespace std::chrono_literals;

namespace {

constexpr std::size_t k64MiB = 64 * 1024 * 1024;

class Answer : public InvokerFixture {};

TEST_F(Answer, IsReturnedUnchanged) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("{ \"OpenFile\" : [ \"C:\\\\\xE6\xB5\x8B.sldprt\" ] }\r\n"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"{ \"OpenFile\" : [ \"C:\\\\\u6D4B.sldprt\" ] }\r\n");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Answer, ThatIsEmptyKeepsTheConnection) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text(""));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_EQ(m_client->ConnectionCount(), 1);
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Answer, MayArriveByteByByte) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("{\"a\":1}").InPiecesOf(1));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"{\"a\":1}");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"{\"a\":1}");
  EXPECT_EQ(m_client->ConnectionCount(), 1);
}

TEST_F(Answer, MayBeSlow) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("late").After(1500ms));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"late");
}

TEST_F(Answer, MayHaveOtherHeaderLines) {
  StartClient();
  const std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":"x"}})";
  m_script.Always("QD_PLMQuery",
                  Reply::Bytes("Content-Type: application/vscode-jsonrpc; charset=utf-8\r\nCONTENT-LENGTH: " +
                               std::to_string(content.size()) + "\r\n\r\n" + content));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
}

TEST_F(Answer, OfNearly64MiBIsReturnedWhole) {
  StartClient();
  const std::string text(64 * 1024 * 1024 - 100, 'x');
  m_script.Always("QD_PLMQuery", Reply::Text(text));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), std::wstring(text.begin(), text.end()));
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Answer, ThatDoesNotFitIntoMemoryIsNoAnswer) {
  // Parsed values need eight times the memory of this text, so that only the parser runs out of memory.
  std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":"x","more":[0)";
  for (int i = 0; i < 512 * 1024; ++i) content += ",0";
  content += "]}}";
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("next"));
  m_script.InTurn("QD_PLMQuery",
                  {Reply::Bytes("Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content)});
  std::optional<FailingMemory> no_memory(4 * 1024 * 1024);

  const std::wstring answer = Invoke(L"QD_PLMQuery");

  no_memory.reset();
  EXPECT_EQ(answer, L"");
  ExpectOneLine(L"QD_PLMQuery", L"out of memory");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"next");
}

/// `size` bytes: `begin`, as many characters x as are needed, and `end`.
std::string Filled(std::size_t size, std::string_view begin, std::string_view end) {
  std::string text(begin);
  text.resize(size - end.size(), 'x');
  return text.append(end);
}

TEST_F(Answer, InAFrameOfExactly64MiBIsReturnedWhole) {
  StartClient();
  constexpr std::string_view kBegin = R"({"jsonrpc":"2.0","id":1,"result":{"answer":")";
  constexpr std::string_view kEnd = R"("}})";
  m_script.Always("QD_PLMQuery", Reply::Message(Filled(k64MiB, kBegin, kEnd)));
  const std::wstring answer = Invoke(L"QD_PLMQuery");
  EXPECT_EQ(answer.size(), k64MiB - kBegin.size() - kEnd.size());
  EXPECT_EQ(answer.find_first_not_of(L'x'), std::wstring::npos);
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Answer, IsRequestedInAFrameOf64MiBAtMost) {
  StartClient();
  m_script.Always("QD_PLMLogin", Reply::Text("x"));
  constexpr std::size_t kRest = 90;  // bytes of the content besides the request's text
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogin", std::wstring(k64MiB - kRest, L'x')), L"x");
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogin", std::wstring(k64MiB - kRest + 1, L'x')), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the request is over 64 MiB");
  const std::vector<plm_client::Request> requests = m_client->Requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_TRUE(requests[0].frame.starts_with("Content-Length: 67108864\r\n\r\n"));
  EXPECT_EQ(requests[0].text.size(), k64MiB - kRest);
}

TEST_F(Answer, BesideAnErrorThatIsNotAnObjectIsReturned) {
  StartClient();
  m_script.Always("QD_PLMQuery",
                  Reply::Message(R"({"jsonrpc":"2.0","id":1,"error":null,"result":{"answer":"x"}})"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  m_script.Always("QD_PLMQuery",
                  Reply::Message(R"({"jsonrpc":"2.0","id":2,"error":5,"result":{"answer":"y"}})"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"y");
  EXPECT_EQ(m_client->ConnectionCount(), 1);
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Answer, ToALargeRequestMayBeLarge) {
  StartClient([](const plm_client::Request& request, std::stop_token) { return Reply::Text(request.text); });
  const std::wstring text(2 * 1024 * 1024, L'\u00FC');
  for (int i = 0; i < 3; ++i) EXPECT_EQ(m_invoker.Invoke(L"QD_PLMQuery", text), text);
  EXPECT_EQ(m_client->ConnectionCount(), 1);
}

TEST_F(Answer, ThatIsMalformedThrowsNoException) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Message(std::string(5'000'000, '[')));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  ExpectOneLine(L"QD_PLMQuery", L"not valid JSON");
}

TEST_F(Answer, IsRequestedWithTheseBytes) {
  StartClient();
  m_invoker.Invoke(L"QD_PLMLogin", L"");
  m_invoker.Invoke(L"QD_PLMImportCurrent", L"{\"file_path\":\"C:\\\\\u00FC.sldprt\"}");

  const std::vector<plm_client::Request> requests = m_client->Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].frame,
            "Content-Length: 90\r\n\r\n"
            "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"invoke\",\"params\":{\"command\":\"QD_PLMLogin\","
            "\"request\":\"\"}}");
  EXPECT_EQ(
      requests[1].frame,
      "Content-Length: 133\r\n\r\n"
      "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"invoke\",\"params\":{\"command\":\"QD_PLMImportCurrent\","
      "\"request\":\"{\\\"file_path\\\":\\\"C:\\\\\\\\\xC3\xBC.sldprt\\\"}\"}}");
  EXPECT_EQ(requests[1].text, "{\"file_path\":\"C:\\\\\xC3\xBC.sldprt\"}");
}

TEST_F(Answer, IsNotRequestedIfTheRequestIsOver64MiB) {
  // given an open connection
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");

  // when a request is too large
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMQuery", std::wstring(64 * 1024 * 1024, L'x')), L"");

  // then nothing of it was sent, and the connection stays open
  ExpectOneLine(L"QD_PLMQuery", L"the request is over 64 MiB");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(m_client->Requests().size(), 2u);
  EXPECT_EQ(m_client->ConnectionCount(), 1);
}

struct Violation {
  const char* name;
  Reply reply;
  std::wstring reason;
};

void PrintTo(const Violation& v, std::ostream* stream) { *stream << v.name; }

class ProtocolViolation : public InvokerFixture, public testing::WithParamInterface<Violation> {};

TEST_P(ProtocolViolation, ReturnsNoAnswerAndEndsTheConnection) {
  // given a client that breaks the protocol once
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("right"));
  m_script.InTurn("QD_PLMQuery", {Reply::Text("right"), GetParam().reply});
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"right");

  // when it does
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");

  // then one log line says why, and the next command opens a new connection
  ExpectOneLine(L"QD_PLMQuery", GetParam().reason);
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"right");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
  EXPECT_EQ(m_client->Requests().size(), 3u);
}

const Violation kViolations[] = {
    {"Error", Reply::Error(-32000, "the vault is closed"), L"an error -32000: the vault is closed"},
    {"NoAnswerInResult", Reply::Result("{}"), L"no string in \"answer\""},
    {"AnswerIsNoText", Reply::Result(R"({"answer":{}})"), L"no string in \"answer\""},
    {"OtherId", Reply::Text("x").WithId(99), L"does not have the id of the request"},
    {"IdOfTheRequestBefore", Reply::Text("x").WithId(1), L"does not have the id of the request"},
    {"NotificationFirst", Reply::Text("x").Following(R"({"jsonrpc":"2.0","method":"progress"})"),
     L"a request or notification instead of the answer"},
    {"RequestFirst", Reply::Text("x").Following(R"({"jsonrpc":"2.0","id":2,"method":"ask"})"),
     L"a request or notification instead of the answer"},
    {"NotJson", Reply::Message("{]"), L"not valid JSON"},
    {"EmptyContent", Reply::Message(""), L"not valid JSON"},
    {"NoHeader", Reply::Bytes(R"({"jsonrpc":"2.0","id":2,"result":{"answer":"x"}})"),
     L"a header that is not valid"},
    {"NoContentLength", Reply::Bytes("Content-Type: x\r\n\r\n{}"), L"without Content-Length"},
    {"HeaderOver8KiB", Reply::Bytes("X-Fill: " + std::string(9000, 'x')), L"over 8 KiB"},
    {"Over64MiB", Reply::Bytes("Content-Length: 67108865\r\n\r\n"), L"over 64 MiB"},
    {"ClosedWithoutAnswer", Reply::Nothing().ThenDisconnect(), L"closed the connection"},
    {"ClosedInTheHeader", Reply::Bytes("Content-Le").ThenDisconnect(), L"closed the connection"},
    {"ClosedInTheContent", Reply::Bytes("Content-Length: 100\r\n\r\n{\"json").ThenDisconnect(),
     L"closed the connection"},
};
INSTANTIATE_TEST_SUITE_P(, ProtocolViolation, testing::ValuesIn(kViolations), CaseName<Violation>);

}  // namespace
