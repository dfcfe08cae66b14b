#include <thread>

#include "handle_count.h"
#include "import_patch.h"
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
  EXPECT_EQ(InvokeUnreached(L"QD_PLMQuery"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMQuery", L"there is no pipe");
}

TEST_F(Connection, ToABusyPipeTimesOutAfterTwoSeconds) {
  StartClient(plm_client::Settings{.instances = 1});
  const UniqueHandle other = OpenPipe(m_pipe);
  ASSERT_TRUE(other);
  const Stopwatch watch;
  EXPECT_EQ(InvokeUnreached(L"QD_PLMQuery"), L"");
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
  InvokeUnreached(L"QD_PLMQuery");
  ExpectOneLine(L"QD_PLMQuery", L"there is no pipe");
  InvokeUnreached(L"QD_PLMTaskManage");
  ExpectOneLine(L"QD_PLMTaskManage", L"there is no pipe");
}

/// For the life of the object, the system reports the process of a pipe's server, and the processes that get
/// the foreground are recorded.
class ForegroundRights {
 public:
  /// @param server the process id, 0 if the system reports none.
  explicit ForegroundRights(ULONG server) {
    server_process = server;
    allowed.clear();
  }

  const std::vector<DWORD>& Allowed() const { return allowed; }

 private:
  static BOOL WINAPI ReportServer(HANDLE, ULONG* process) {
    *process = server_process;
    return TRUE;
  }
  static BOOL WINAPI Record(DWORD process) {
    allowed.push_back(process);
    return TRUE;
  }

  static inline ULONG server_process;
  static inline std::vector<DWORD> allowed;
  const ImportPatch m_server{GetModuleHandleW(nullptr), "GetNamedPipeServerProcessId", &ReportServer};
  const ImportPatch m_allow{GetModuleHandleW(nullptr), "AllowSetForegroundWindow", &Record};
};

TEST_F(Connection, LetsTheClientComeToTheForegroundBeforeEachRequest) {
  const ForegroundRights rights(4711);
  std::vector<std::size_t> allowed_at_request;
  StartClient([&](const plm_client::Request&, std::stop_token) {
    allowed_at_request.push_back(rights.Allowed().size());
    return Reply::Text("x");
  });
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(rights.Allowed(), (std::vector<DWORD>{4711, 4711, 4711}));
  EXPECT_EQ(allowed_at_request, (std::vector<std::size_t>{1, 2, 3}));
}

TEST_F(Connection, GivesNoForegroundRightIfTheSystemDoesNotKnowTheClient) {
  const ForegroundRights rights(0);
  StartClient();
  Invoke(L"QD_PLMQuery");
  EXPECT_EQ(m_client->Requests().size(), 1u);
  EXPECT_TRUE(rights.Allowed().empty());
}

TEST_F(Connection, IsClosedAfterTheTimeoutOfACommand) {
  StartClient();
  m_script.Always("QD_PLMLogout", Reply::Nothing());
  m_script.Always("QD_PLMQuery", Reply::Text("x"));
  const Stopwatch watch;
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogout", L"", {.timeout = 500ms}), L"");
  EXPECT_GE(watch.Milliseconds(), 450u);
  EXPECT_LT(watch.Milliseconds(), 500 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogout", L"there was no answer within 500 ms");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"x");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_F(Connection, ToABusyPipeEndsWithTheTimeoutOfTheCommand) {
  StartClient(plm_client::Settings{.instances = 1});
  const UniqueHandle other = OpenPipe(m_pipe);
  const Stopwatch watch;
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogout", L"", {.timeout = 300ms}), L"");
  EXPECT_LT(watch.Milliseconds(), 300 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogout", L"there was no answer within 300 ms");
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
