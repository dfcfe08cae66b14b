// What the example clients do with connections and messages that no session of the CAD host has.
#include <gtest/gtest.h>

#include <string>

#include "case_name.h"
#include "example_client.h"
#include "host.h"

namespace {

constexpr const char* kLogin = R"({"__InvokeResult__":true,"user":"kim"})";
constexpr const char* kNoAnswer = R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})";

/// A request with a text of more bytes than characters.
std::string RequestFrame(int id) {
  return Frame("{\"jsonrpc\":\"2.0\",\"id\":" + std::to_string(id) +
               R"(,"method":"invoke","params":{"command":"QD_PLMQuery","request":"Ü"}})");
}

class ExampleConnections : public testing::TestWithParam<Example> {
 protected:
  Host Connect() const { return ConnectWhenServed(m_client.Pipe()); }

  ExampleClient m_client{GetParam()};
};

TEST_P(ExampleConnections, AnswerAnotherMethodWithAnErrorAndStay) {
  const Host host = Connect();
  host.Send(Frame(R"({"jsonrpc":"2.0","id":1,"method":"ping"})"));
  const std::string answer = host.ReceiveContent();
  EXPECT_TRUE(answer.starts_with(R"({"jsonrpc":"2.0","id":1,"error":{"code":-32601,)")) << answer;
  EXPECT_NE(answer.find("ping"), std::string::npos) << answer;
  EXPECT_EQ(host.Ask(1, "QD_PLMQuery", kLogin), kNoAnswer);
}

TEST_P(ExampleConnections, AnswerADataSelectorWithoutAFileAsIfThePanelWasClosed) {
  EXPECT_EQ(Connect().Ask(1, "QD_PLMDataSelector", kLogin), kNoAnswer);
}

TEST_P(ExampleConnections, AnswerARequestOfAnotherUserWithAnErrorThatSaysSo) {
  const Host host = Connect();
  const std::string answer = host.Ask(1, "QD_PLMDataSelector", R"({"user":"Anna"})");
  EXPECT_NE(answer.find(R"("code":-32603)"), std::string::npos) << answer;
  EXPECT_NE(answer.find("Anna is not logged in here, but kim"), std::string::npos) << answer;
  EXPECT_EQ(host.Ask(1, "QD_PLMQuery", kLogin), kNoAnswer);
}

TEST_P(ExampleConnections, AreServedSideBySideAndOneAfterAnother) {
  {
    const Host first = Connect(), second = Connect();
    EXPECT_EQ(second.Ask(1, "QD_PLMQuery", kLogin), kNoAnswer);
    EXPECT_EQ(first.Ask(1, "QD_PLMQuery", kLogin), kNoAnswer);
  }
  for (int times = 0; times < 5; ++times) EXPECT_EQ(Connect().Ask(1, "QD_PLMQuery", kLogin), kNoAnswer);
}

TEST_P(ExampleConnections, ReadFramesInPiecesAndTwoAtOnce) {
  const Host host = Connect();
  for (const char byte : RequestFrame(1)) host.Send({&byte, 1});
  EXPECT_EQ(host.ReceiveContent(), kNoAnswer);
  host.Send(RequestFrame(2) + RequestFrame(1));
  EXPECT_EQ(host.ReceiveContent(), R"({"jsonrpc":"2.0","id":2,"result":{"answer":""}})");
  EXPECT_EQ(host.ReceiveContent(), kNoAnswer);
}

TEST_P(ExampleConnections, EndAtABrokenFrameAndOthersAreServed) {
  const Host host = Connect();
  host.Send("Content-Length: many\r\n\r\n");
  EXPECT_EQ(host.ReceiveContent(), "closed");
  EXPECT_EQ(Connect().Ask(1, "QD_PLMQuery", kLogin), kNoAnswer);
}

INSTANTIATE_TEST_SUITE_P(, ExampleConnections, testing::ValuesIn(AllExamples()), CaseName<Example>);

}  // namespace
