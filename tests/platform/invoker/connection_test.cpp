#include <thread>

#include "handle_count.h"
#include "invoker_fixture.h"
#include "raw_server.h"

using plm_client::Reply;
using namespace std::chrono_literals;

namespace {

constexpr ULONGLONG kAtOnce = 1'000;     // milliseconds, long enough for a busy machine
constexpr std::size_t kFewHandles = 10;  // that the client's threads in this process may have open

class Connection : public InvokerFixture {};

TEST_F(Connection, IsOpenedByTheFirstCommandAndKept) {
  StartClient();
  EXPECT_EQ(m_client->ConnectionCount(), 0);
  for (int i = 0; i < 5; ++i) Invoke(L"QD_PLMQuery");
  EXPECT_EQ(m_client->ConnectionCount(), 1);

  const std::vector<plm_client::Request> requests = m_client->Requests();
  ASSERT_EQ(requests.size(), 5u);
  for (std::size_t i = 0; i < requests.size(); ++i) EXPECT_EQ(requests[i].id, i + 1);
}

TEST_F(Connection, IsClosedWithTheInvoker) {
  StartClient();
  {
    CZALCmdInvoker other(L"Test", L"");
    other.Invoke(L"QD_PLMQuery", L"");
    EXPECT_EQ(m_client->OpenConnectionCount(), 1);
  }
  AwaitOpenConnections(0);
}

TEST_F(Connection, IsReplacedSilentlyIfItBrokeWhileIdle) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  m_client->Disconnect();
  AwaitOpenConnections(0);
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Connection, IsReplacedSilentlyIfTheClientWasRestarted) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  m_client.reset();
  StartClient();
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Connection, IsReplacedOnlyOnce) {
  // given an open connection that broke, and a client that now closes every new one
  StartClient();
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  m_client.reset();
  StartClient(plm_client::Settings{.read_limit = 0});
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_EQ(m_client->ConnectionCount(), 1);
  ExpectOneLine(L"QD_PLMQuery", L"closed the connection");
}

TEST_F(Connection, IsReplacedAfterAnUnexpectedMessage) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  m_client->SendUnasked(R"({"jsonrpc":"2.0","id":2,"result":{"answer":"not asked for"}})");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_F(Connection, IsReplacedIfAMessageFollowsTheAnswer) {
  StartClient();
  m_script.Always("QD_PLMQuery",
                  Reply::Text("x").FollowedBy(R"({"jsonrpc":"2.0","id":2,"result":{"answer":"y"}})"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  AwaitOpenConnections(0);
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_F(Connection, ThatEndsBeforeTheRequestIsReadReturnsNoAnswer) {
  StartClient(plm_client::Settings{.read_limit = 0});
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMQuery", std::wstring(1'000'000, L'x')), L"");
  ExpectOneLine(L"QD_PLMQuery", L"closed the connection");
}

TEST_F(Connection, ThatEndsInTheMiddleOfTheRequestReturnsNoAnswer) {
  StartClient(plm_client::Settings{.read_limit = 100'000});
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMQuery", std::wstring(1'000'000, L'x')), L"");
  ExpectOneLine(L"QD_PLMQuery", L"closed the connection");
}

TEST_F(Connection, ThatEndsWhileWaitingEndsTheWaitAtOnce) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Nothing());
  ULONGLONG closed = 0;
  std::jthread closer([&] {
    m_client->WaitForRequests(1, 10s);
    Sleep(300);
    closed = GetTickCount64();
    m_client->Disconnect();
  });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  closer.join();
  EXPECT_LT(GetTickCount64() - closed, kAtOnce);
  ExpectOneLine(L"QD_PLMQuery", L"closed the connection");
}

TEST_F(Connection, NeverReturnsALateAnswerForALaterCommand) {
  // given a command that failed with its connection, and an answer that comes later
  StartClient();
  m_script.InTurn("QD_PLMQuery", {Reply::Text("late").Following(R"({"jsonrpc":"2.0","method":"progress"})")});
  m_script.Always("QD_PLMTaskManage", Reply::Text("right"));
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_EQ(Invoke(L"QD_PLMTaskManage"), L"right");
}

TEST_F(Connection, WorksIfTheClientAnswersBeforeItHasReadEverything) {
  // given a client that writes more than fits into the pipe before it reads the rest of a large request
  ConfigurePipe();
  const std::string text(2'000'000, 'y');
  const std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":")" + text + "\"}}";
  const RawServer server(m_pipe, [&](HANDLE connection) {
    ReadBytes(connection, 10);
    WriteAll(connection, "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content);
    ReadBytes(connection, 1'990'000);
  });
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMQuery", std::wstring(2'000'000, L'x')),
            std::wstring(text.begin(), text.end()));
}

TEST_F(Connection, IsSeparateForEachInvoker) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  CZALCmdInvoker second(L"Test", L"");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(second.Invoke(L"QD_PLMQuery", L""), L"x");
  EXPECT_EQ(m_client->OpenConnectionCount(), 2);
}

TEST_F(Connection, WithoutAPipeAndAProgramFailsAtOnce) {
  ConfigurePipe();
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMQuery", L"there is no pipe");
}

TEST_F(Connection, ToABusyPipeTimesOutAfterTwoSeconds) {
  StartClient(plm_client::Settings{.instances = 1});
  const UniqueHandle other = OpenPipe(m_pipe);
  ASSERT_TRUE(other);
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_GE(watch.Milliseconds(), 1'900u);
  EXPECT_LT(watch.Milliseconds(), 2'000 + kAtOnce);
  ExpectOneLine(L"QD_PLMQuery", L"stayed busy for two seconds");
}

TEST_F(Connection, ToABusyPipeIsMadeAsSoonAsItIsFree) {
  StartClient(plm_client::Settings{.instances = 1});
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  UniqueHandle other = OpenPipe(m_pipe);
  ASSERT_TRUE(other);
  const std::jthread closer([&] {
    Sleep(500);
    other.reset();
  });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Connection, LogsALineForEachFailedCommand) {
  ConfigurePipe();
  Invoke(L"QD_PLMQuery");
  ExpectOneLine(L"QD_PLMQuery", L"there is no pipe");
  Invoke(L"QD_PLMTaskManage");
  ExpectOneLine(L"QD_PLMTaskManage", L"there is no pipe");
}

TEST_F(Connection, LeaksNoHandleInManyCommands) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  for (int i = 0; i < 20; ++i) Invoke(L"QD_PLMQuery");
  const std::size_t before = HandleCount();
  for (int i = 0; i < 500; ++i) ASSERT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_LT(HandleCount(), before + kFewHandles);
  EXPECT_EQ(m_client->ConnectionCount(), 1);
}

TEST_F(Connection, LeaksNoHandleInManyReconnections) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  m_script.Always("QD_PLMTaskManage", Reply::Error(1, "no"));
  for (int i = 0; i < 5; ++i) Invoke(L"QD_PLMTaskManage");
  const std::size_t before = HandleCount();
  for (int i = 0; i < 100; ++i) {
    ASSERT_EQ(Invoke(L"QD_PLMTaskManage"), L"");
  }
  EXPECT_EQ(m_client->ConnectionCount(), 105);
  EXPECT_LT(HandleCount(), before + kFewHandles);
}

TEST_F(Connection, LeaksNoHandleInManyInvokers) {
  StartClient();
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  std::size_t before = 0;
  for (int i = 0; i < 105; ++i) {
    if (i == 5) before = HandleCount();
    CZALCmdInvoker other(L"Test", L"");
    ASSERT_EQ(other.Invoke(L"QD_PLMQuery", L""), L"x");
  }
  EXPECT_LT(HandleCount(), before + kFewHandles);
  AwaitOpenConnections(0);
}

}  // namespace
