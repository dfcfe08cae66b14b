#include "plm_client/client.h"

#include <aclapi.h>
#include <gtest/gtest.h>
#include <sddl.h>

#include <atomic>

#include "host.h"
#include "plm_client/script.h"

using namespace plm_client;
using namespace std::chrono_literals;

namespace {

class ClientTest : public testing::Test {
 protected:
  const std::wstring m_pipe = NewPipeName();
  Script m_script;
};

TEST_F(ClientTest, AnswersTheExampleOfTheProtocolByteByByte) {
  // given the example in the description of the protocol
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  m_script.Always("QD_PLMLogin", Reply::Text(R"({"__InvokeResult__":true,"user":"kim"})"));
  const Host host(m_pipe);
  const std::string request =
      "Content-Length: 90\r\n\r\n"
      "{\"jsonrpc\":\"2.0\",\"id\":7,\"method\":\"invoke\",\"params\":{\"command\":\"QD_PLMLogin\","
      "\"request\":\"\"}}";
  const std::string answer =
      "Content-Length: 91\r\n\r\n"
      "{\"jsonrpc\":\"2.0\",\"id\":7,\"result\":{\"answer\":\"{\\\"__InvokeResult__\\\":true,\\\"user\\\":"
      "\\\"kim\\\"}\"}}";

  host.Send(request);
  EXPECT_EQ(host.Receive(answer.size()), answer);

  const std::vector<Request> requests = client.Requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].id, 7u);
  EXPECT_EQ(requests[0].command, "QD_PLMLogin");
  EXPECT_EQ(requests[0].text, "");
  EXPECT_EQ(requests[0].frame, request);
  EXPECT_EQ(requests[0].connection, 1);
}

TEST_F(ClientTest, ReadsRequestsHoweverTheyAreSplit) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  const Host host(m_pipe);
  const std::string content =
      R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"command":"A","request":"{\"a\":1}"}})";
  const std::string two = Frame(content) + Frame(content);
  for (const char byte : two) host.Send({&byte, 1});
  EXPECT_EQ(host.ReceiveContent(), R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})");
  EXPECT_EQ(host.ReceiveContent(), R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})");
  host.Send(two);
  host.ReceiveContent();
  host.ReceiveContent();
  EXPECT_EQ(client.Requests().size(), 4u);
  EXPECT_EQ(client.Requests()[3].text, "{\"a\":1}");
}

TEST_F(ClientTest, SendsRepliesInTurnBeforeTheConstantReply) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  m_script.InTurn("A", {Reply::Text("1"), Reply::Text("2")});
  m_script.Always("A", Reply::Text("always"));
  const Host host(m_pipe);
  EXPECT_EQ(host.Ask(1, "A"), R"({"jsonrpc":"2.0","id":1,"result":{"answer":"1"}})");
  EXPECT_EQ(host.Ask(2, "A"), R"({"jsonrpc":"2.0","id":2,"result":{"answer":"2"}})");
  EXPECT_EQ(host.Ask(3, "A"), R"({"jsonrpc":"2.0","id":3,"result":{"answer":"always"}})");
  EXPECT_EQ(host.Ask(4, "B"), R"({"jsonrpc":"2.0","id":4,"result":{"answer":""}})");
}

TEST_F(ClientTest, SendsErrorsAndExceptionsOfTheHandler) {
  const Client client({.pipe = m_pipe}, [](const Request& request, std::stop_token) {
    if (request.command == "A") return Reply::Error(-5, "no \"A\"");
    throw std::runtime_error("broken");
  });
  const Host host(m_pipe);
  EXPECT_EQ(host.Ask(1, "A"), R"({"jsonrpc":"2.0","id":1,"error":{"code":-5,"message":"no \"A\""}})");
  EXPECT_EQ(host.Ask(2, "B"), R"({"jsonrpc":"2.0","id":2,"error":{"code":-32603,"message":"broken"}})");
}

TEST_F(ClientTest, CanBreakTheProtocolInEveryWay) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  m_script.InTurn(
      "A", {Reply::Text("x").WithId(99), Reply::Text("x").Following("{}"), Reply::Text("x").FollowedBy("[]"),
            Reply::Result("5"), Reply::Message("no json"), Reply::Bytes("abc").ThenDisconnect()});
  const Host host(m_pipe);
  EXPECT_EQ(host.Ask(1, "A"), R"({"jsonrpc":"2.0","id":99,"result":{"answer":"x"}})");
  EXPECT_EQ(host.Ask(2, "A"), "{}");
  EXPECT_EQ(host.ReceiveContent(), R"({"jsonrpc":"2.0","id":2,"result":{"answer":"x"}})");
  EXPECT_EQ(host.Ask(3, "A"), R"({"jsonrpc":"2.0","id":3,"result":{"answer":"x"}})");
  EXPECT_EQ(host.ReceiveContent(), "[]");
  EXPECT_EQ(host.Ask(4, "A"), R"({"jsonrpc":"2.0","id":4,"result":5})");
  EXPECT_EQ(host.Ask(5, "A"), "no json");
  host.Send(client.Requests().back().frame);
  EXPECT_EQ(host.Receive(100), "abc");
}

TEST_F(ClientTest, WaitsBeforeItAnswers) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  m_script.Always("A", Reply::Text("x").After(300ms));
  const Host host(m_pipe);
  const ULONGLONG start = GetTickCount64();
  host.Ask(1, "A");
  EXPECT_GE(GetTickCount64() - start, 290u);
}

TEST_F(ClientTest, ServesTheNextHostAfterOneHasDisconnected) {
  const Client client({.pipe = m_pipe, .instances = 1}, std::ref(m_script));
  for (int i = 1; i <= 5; ++i) {
    Host host(m_pipe);
    for (int tries = 0; tries < 100 && !host.IsConnected(); ++tries) {
      Sleep(10);
      host = Host(m_pipe);
    }
    ASSERT_TRUE(host.IsConnected());
    EXPECT_EQ(host.Ask(i, "A").find("error"), std::string::npos);
    EXPECT_EQ(client.Requests().back().connection, i);
  }
}

// The order may reach the threads that serve a moment later, when the next host is there already.
TEST_F(ClientTest, ClosesNoConnectionThatIsMadeAfterTheOrder) {
  Client client({.pipe = m_pipe}, std::ref(m_script));
  for (int i = 1; i <= 100; ++i) {
    client.Disconnect();
    const Host host = ConnectWhenServed(m_pipe);
    ASSERT_EQ(host.Ask(i, "A").find("closed"), std::string::npos) << i;
  }
}

TEST_F(ClientTest, ServesSeveralHostsAtTheSameTime) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  m_script.Always("slow", Reply::Text("x").After(500ms));
  const Host first(m_pipe), second(m_pipe);
  std::jthread slow([&] { first.Ask(1, "slow"); });
  ASSERT_TRUE(client.WaitForRequests(1, 5s));
  EXPECT_EQ(second.Ask(1, "A"), R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})");
  EXPECT_EQ(client.OpenConnectionCount(), 2);
  EXPECT_EQ(client.ConnectionCount(), 2);
}

TEST_F(ClientTest, RefusesInvalidRequestsAndKeepsTheConnection) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  const Host host(m_pipe);
  const char* const invalid_requests[] = {
      "{",
      "[]",
      R"({"jsonrpc":"2.0","method":"invoke","params":{"command":"A","request":""}})",
      R"({"jsonrpc":"2.0","id":1,"params":{"command":"A","request":""}})",
      R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"command":"A","request":{}}})",
      R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"request":""}})",
  };
  for (const char* const content : invalid_requests) {
    host.Send(Frame(content));
    EXPECT_TRUE(host.ReceiveContent().starts_with(R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,)"))
        << content;
  }
  EXPECT_TRUE(client.Requests().empty());
  EXPECT_EQ(host.Ask(1, "A"), R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})");
}

TEST_F(ClientTest, AnswersAnotherMethodWithAnErrorAndKeepsTheConnection) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  const Host host(m_pipe);
  host.Send(Frame(R"({"jsonrpc":"2.0","id":7,"method":"ping"})"));
  EXPECT_EQ(host.ReceiveContent(),
            R"({"jsonrpc":"2.0","id":7,"error":{"code":-32601,"message":"there is no method \"ping\""}})");
  EXPECT_TRUE(client.Requests().empty()) << "it is no command";
  EXPECT_EQ(host.Ask(8, "A"), R"({"jsonrpc":"2.0","id":8,"result":{"answer":""}})");
  EXPECT_EQ(client.ConnectionCount(), 1);
}

TEST_F(ClientTest, ClosesTheConnectionAfterAnInvalidHeader) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  const Host host(m_pipe);
  host.Send("Content-Size: 2\r\n\r\n{}");
  EXPECT_NE(host.ReceiveContent().find("Content-Length"), std::string::npos);
  EXPECT_EQ(host.ReceiveContent(), "closed");
  EXPECT_EQ(Host(m_pipe).Ask(1, "A"), R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})");
}

TEST_F(ClientTest, CanBeDestroyedWhileAHostWaitsForAPerson) {
  // given a handler that waits for a person until a stop is requested
  auto client = std::make_unique<Client>(Settings{.pipe = m_pipe}, [](const Request&, std::stop_token stop) {
    while (!stop.stop_requested()) Sleep(10);
    return Reply::Nothing();
  });
  const Host host(m_pipe);
  std::string content;
  const std::jthread asking([&] { content = host.Ask(1, "A"); });
  ASSERT_TRUE(client->WaitForRequests(1, 5s));
  client.reset();  // must return
  EXPECT_FALSE(Host(m_pipe).IsConnected());
}

TEST_F(ClientTest, KnowsWhetherTheHostThatAskedIsStillThere) {
  std::atomic<bool> was_there = false, is_gone = false;
  std::atomic<const Client*> served = nullptr;
  const Client client({.pipe = m_pipe}, [&](const Request& request, std::stop_token) {
    while (!served) Sleep(1);
    was_there = served.load()->HostIsThere(request.connection);
    for (int tries = 0; tries < 500 && !is_gone; ++tries) {
      Sleep(10);
      is_gone = !served.load()->HostIsThere(request.connection);
    }
    return Reply::Text("");
  });
  served = &client;
  {
    const Host host(m_pipe);
    host.Send(Frame(R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"command":"A","request":""}})"));
    ASSERT_TRUE(client.WaitForRequests(1, 5s));
    for (int tries = 0; tries < 500 && !was_there; ++tries) Sleep(10);
  }
  for (int tries = 0; tries < 500 && !is_gone; ++tries) Sleep(10);
  EXPECT_TRUE(was_there);
  EXPECT_TRUE(is_gone);
  EXPECT_FALSE(client.HostIsThere(99)) << "there is no such connection";
}

TEST_F(ClientTest, FailsIfAnotherClientServesThePipe) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  try {
    const Client second({.pipe = m_pipe}, std::ref(m_script));
    ADD_FAILURE() << "two clients serve one pipe";
  } catch (const std::runtime_error& failure) {
    EXPECT_NE(std::string(failure.what()).find("tavo-client-test-"), std::string::npos);
  }
}

TEST_F(ClientTest, FailsIfTheSecurityDescriptorIsNotValid) {
  EXPECT_THROW(Client({.pipe = m_pipe, .security = L"nonsense"}, std::ref(m_script)), std::runtime_error);
}

TEST_F(ClientTest, AllowsOnlyTheCurrentUserToOpenThePipe) {
  const Client client({.pipe = m_pipe}, std::ref(m_script));
  const Host host(m_pipe);
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ASSERT_EQ(
      GetSecurityInfo(host.Pipe(), SE_KERNEL_OBJECT, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                      nullptr, nullptr, nullptr, nullptr, &descriptor),
      static_cast<DWORD>(ERROR_SUCCESS));
  wchar_t* text = nullptr;
  ASSERT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(
      descriptor, SDDL_REVISION_1, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, &text, nullptr));
  const std::wstring sid = DefaultPipeName().substr(DefaultPipeName().find(L"S-1-"));
  const std::wstring found = text;
  EXPECT_TRUE(found.starts_with(L"O:" + sid + L"D:P(A;;")) << testing::PrintToString(found);
  EXPECT_TRUE(found.ends_with(L";;;" + sid + L")")) << testing::PrintToString(found);
  EXPECT_EQ(std::count(found.begin(), found.end(), L'('), 1) << testing::PrintToString(found);
  LocalFree(text);
  LocalFree(descriptor);
}

}  // namespace
