#include <future>
#include <memory>

#include "case_name.h"
#include "failing_memory.h"
#include "host_thread.h"
#include "invoker_fixture.h"
#include "raw_server.h"

using plm_client::Reply;
using plm_client::Request;

namespace {

constexpr ULONGLONG kAtOnce = 1'000;  // milliseconds, long enough for a busy machine

constexpr UINT kOther = WM_APP + 2;  // a message that is not input

struct ThreadKind {
  const char* name;
  std::optional<COINIT> apartment;
};

void PrintTo(const ThreadKind& kind, std::ostream* stream) { *stream << kind.name; }

/// A thread of the host, of each kind, that waits for the answer to a command.
class Wait : public InvokerFixture, public testing::WithParamInterface<ThreadKind> {
 protected:
  /// Starts a client that runs `action` before it answers.
  void StartClientThat(std::function<void()> action) {
    StartClient([action = std::move(action)](const Request&, std::stop_token) {
      action();
      return Reply::Text("answered");
    });
  }

  const Apartment m_apartment{GetParam().apartment};
  HostWindow m_window;
};

TEST_P(Wait, ServesMessagesThatOtherThreadsSend) {
  std::optional<LRESULT> result;
  m_window.OnSent([] { return 17; });
  StartClientThat([&] { result = m_window.Send(); });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");
  EXPECT_EQ(result, 17);
}

TEST_P(Wait, RepaintsTheThreadsWindows) {
  int painted = 0;
  StartClientThat([&] {
    for (int i = 0; i < 3; ++i) painted += m_window.Repaint();
  });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");
  EXPECT_EQ(painted, 3);
}

TEST_P(Wait, DropsInputThatArrivesAndLeavesAllOtherMessagesInOrder) {
  // given a key from before, and input between other messages during the wait
  PostMessageW(m_window.Handle(), WM_KEYDOWN, VK_RETURN, 0);
  StartClientThat([&] {
    PostMessageW(m_window.Handle(), kOther, 1, 0);
    for (const UINT input : {WM_NCMOUSEMOVE, WM_NCLBUTTONDOWN, WM_KEYDOWN, WM_CHAR, WM_KEYUP, WM_SYSKEYDOWN,
                             WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_MOUSEWHEEL,
                             WM_TOUCH, WM_POINTERDOWN, WM_POINTERUP}) {
      PostMessageW(m_window.Handle(), input, 'A', 0);
    }
    PostMessageW(m_window.Handle(), kOther, 2, 0);
    m_window.Send();
    m_window.Repaint();
    PostMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    PostMessageW(m_window.Handle(), kOther, 3, 0);
  });

  // when a command waits
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");

  // then nothing was handled, and only the other messages and the earlier key are in the queue
  EXPECT_EQ(m_window.InputCount(), 0);
  MSG message;
  for (const WPARAM expected : {1, 2, 3}) {
    ASSERT_TRUE(PeekMessageW(&message, m_window.Handle(), kOther, kOther, PM_REMOVE));
    EXPECT_EQ(message.wParam, expected);
  }
  ASSERT_TRUE(PeekMessageW(&message, m_window.Handle(), WM_NCMOUSEMOVE, WM_MOUSELAST, PM_REMOVE));
  EXPECT_EQ(message.message, static_cast<UINT>(WM_KEYDOWN));
  EXPECT_EQ(message.wParam, static_cast<WPARAM>(VK_RETURN));
  EXPECT_FALSE(PeekMessageW(&message, m_window.Handle(), WM_NCMOUSEMOVE, WM_MOUSELAST, PM_REMOVE));
}

TEST_P(Wait, PutsEarlierInputBackInItsOrder) {
  constexpr UINT kEarlier[] = {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_KEYDOWN, WM_NCLBUTTONDOWN};
  for (const UINT input : kEarlier) {
    PostMessageW(m_window.Handle(), input, 0, 0);
    Sleep(20);  // so that the times of the messages differ
  }
  StartClientThat([&] { PostMessageW(m_window.Handle(), WM_KEYDOWN, 'A', 0); });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");
  MSG message;
  for (const UINT expected : kEarlier) {
    ASSERT_TRUE(PeekMessageW(&message, m_window.Handle(), WM_NCMOUSEMOVE, WM_MOUSELAST, PM_REMOVE));
    EXPECT_EQ(message.message, expected);
  }
  EXPECT_FALSE(PeekMessageW(&message, m_window.Handle(), WM_NCMOUSEMOVE, WM_MOUSELAST, PM_REMOVE));
}

TEST_P(Wait, LeavesTheQuitMessageInTheQueueBehindOtherMessages) {
  PostQuitMessage(5);
  StartClientThat([&] {
    PostMessageW(m_window.Handle(), WM_KEYDOWN, 'A', 0);
    PostMessageW(m_window.Handle(), kOther, 1, 0);
    m_window.Send();
  });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_KEYFIRST, kOther, PM_REMOVE));
  EXPECT_EQ(message.message, kOther);
  ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
  EXPECT_EQ(message.wParam, 5u);
}

TEST_P(Wait, EndsWithoutAnAnswerIfTheUserPressesEsc) {
  StartClient([&](const Request& request, std::stop_token) {
    if (request.command == "QD_PLMTaskManage") return Reply::Text("answered");
    PostMessageW(m_window.Handle(), kOther, 1, 0);
    PostMessageW(m_window.Handle(), WM_KEYDOWN, 'A', 0);
    PostMessageW(m_window.Handle(), WM_KEYDOWN, VK_ESCAPE, 0);
    return Reply::Text("too late").After(std::chrono::seconds(5));
  });
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMQuery", L"cancelled by the user");

  // then Esc does nothing else, and the next command uses a new connection
  MSG message;
  EXPECT_TRUE(PeekMessageW(&message, m_window.Handle(), kOther, kOther, PM_REMOVE));
  EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
  EXPECT_EQ(Invoke(L"QD_PLMTaskManage"), L"answered");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_P(Wait, DoesNotEndForAnEscFromBefore) {
  PostMessageW(m_window.Handle(), WM_KEYDOWN, VK_ESCAPE, 0);
  StartClientThat([] { Sleep(300); });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");
  MSG message;
  EXPECT_TRUE(PeekMessageW(&message, m_window.Handle(), WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE));
}

TEST_P(Wait, ReturnsNoAnswerForASecondCommandOfAnInvokerWithTheSameFlag) {
  // given two invokers of one owner, and a window procedure that uses the second
  const auto busy = std::make_shared<std::atomic<bool>>(false);
  CZALCmdInvoker first(L"Test", L"", busy);
  CZALCmdInvoker other(L"Test", L"", busy);
  std::wstring second = L"not invoked";
  m_window.OnSent([&] {
    second = other.Invoke(L"QD_PLMTaskManage", L"");
    return 1;
  });
  StartClientThat([&] { m_window.Send(); });

  EXPECT_EQ(first.Invoke(L"QD_PLMQuery", L""), L"answered");

  EXPECT_EQ(second, L"");
  ExpectOneLine(L"QD_PLMTaskManage", L"another command is still waiting");
  EXPECT_EQ(m_client->Requests().size(), 1u);
  m_window.OnSent([] { return 1; });
  EXPECT_EQ(other.Invoke(L"QD_PLMQuery", L""), L"answered");
}

TEST_P(Wait, ReturnsNoAnswerAtOnceForASecondCommand) {
  // given a window procedure that invokes a second command
  std::wstring second = L"not invoked";
  ULONGLONG took = 0;
  m_window.OnSent([&] {
    const Stopwatch watch;
    second = m_invoker.Invoke(L"QD_PLMTaskManage", L"");
    took = watch.Milliseconds();
    return 1;
  });
  StartClientThat([&] { m_window.Send(); });

  // when it runs while the first command waits
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");

  // then the second was not sent, and the first and its connection continue
  EXPECT_EQ(second, L"");
  EXPECT_LT(took, kAtOnce);
  ExpectOneLine(L"QD_PLMTaskManage", L"another command is still waiting");
  EXPECT_EQ(m_client->Requests().size(), 1u);
  m_window.OnSent([] { return 1; });
  EXPECT_EQ(Invoke(L"QD_PLMTaskManage"), L"answered");
  EXPECT_EQ(m_client->ConnectionCount(), 1);
}

TEST_P(Wait, ForABusyPipeServesTheWindowToo) {
  StartClient(plm_client::Settings{.instances = 1});
  const UniqueHandle other = OpenPipe(m_pipe);
  std::future<bool> served = std::async(std::launch::async, [&] {
    Sleep(200);
    return m_window.Send().has_value() && m_window.Repaint();
  });
  EXPECT_EQ(InvokeUnreached(L"QD_PLMQuery"), L"");
  EXPECT_EQ(served.wait_for(std::chrono::seconds(0)), std::future_status::ready);
  EXPECT_TRUE(served.get());
}

TEST_P(Wait, ForAClientThatDoesNotReadYetServesTheWindowToo) {
  // given a request that does not fit into the pipe, a client that does not read it until the host's window
  // has handled a message, and a window that invokes a second command
  ConfigurePipe();
  std::wstring second = L"not invoked";
  ULONGLONG took = kAtOnce;
  m_window.OnSent([&] {
    const Stopwatch watch;
    second = Invoke(L"QD_PLMTaskManage");
    took = watch.Milliseconds();
    return 17;
  });
  std::optional<LRESULT> sent;
  bool painted = false;
  const RawServer server(m_pipe, [&](HANDLE connection) {
    Sleep(200);  // by then the pipe is full
    sent = m_window.Send();
    painted = m_window.Repaint();
    ReadBytes(connection, 2'000'000);
    const std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":"answered"}})";
    WriteAll(connection, "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content);
  });

  // when the request is sent
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMQuery", std::wstring(2'000'000, L'x')), L"answered");

  // then the window was served, and the second command was not sent
  EXPECT_EQ(sent, 17);
  EXPECT_TRUE(painted);
  EXPECT_EQ(second, L"");
  EXPECT_LT(took, kAtOnce);
  ExpectOneLine(L"QD_PLMTaskManage", L"another command is still waiting");
}

TEST_P(Wait, ContinuesAfterTheOwnerReleasedTheInvoker) {
  // given an invoker that a caller owns too, and another owner that releases it during the wait
  auto owner = std::make_shared<CZALCmdInvoker>(L"Test", L"");
  std::shared_ptr<CZALCmdInvoker> caller = owner;
  m_window.OnSent([&] {
    owner.reset();
    return 1;
  });
  StartClientThat([&] { m_window.Send(); });

  // then the caller gets its answer, and the connection ends when the caller releases the invoker
  EXPECT_EQ(caller->Invoke(L"QD_PLMQuery", L""), L"answered");
  EXPECT_FALSE(owner);
  EXPECT_EQ(m_client->OpenConnectionCount(), 1);
  caller.reset();
  AwaitOpenConnections(0);
}

TEST_P(Wait, EndsAtItsTimeLimitAlsoIfTheAnswerComesByteByByte) {
  constexpr std::chrono::milliseconds kLimit{500};
  ConfigurePipe();
  const RawServer server(m_pipe, [](HANDLE pipe) {
    ReadBytes(pipe, 1);
    WriteAll(pipe, "Content-Length: 1000\r\n\r\n");
    for (int byte = 0; byte < 40; ++byte, Sleep(30)) WriteAll(pipe, "x");
  });
  const Stopwatch watch;
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogout", L"", {.timeout = kLimit}), L"");
  EXPECT_LT(watch.Milliseconds(), 2 * kAtOnce);
  ExpectOneLine(L"QD_PLMLogout", L"there was no answer within 500 ms");
}

TEST_P(Wait, EndsWithoutAnAnswerIfAWindowThrows) {
  const ThrowingDispatch dispatch;
  m_window.OnPaint([] { throw 5; });
  StartClientThat([&] { m_window.Repaint(); });
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"");
  ExpectOneLine(L"QD_PLMQuery", L"unknown exception");
  m_window.OnPaint([] {});
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"answered");
}

TEST_P(Wait, EndsWithoutALogLineIfThereIsNoMemory) {
  const ThrowingDispatch dispatch;
  std::optional<FailingMemory> no_memory;
  m_window.OnPaint([&] {
    no_memory.emplace();
    throw 5;
  });
  StartClientThat([&] { m_window.Repaint(); });
  const std::wstring answer = Invoke(L"QD_PLMQuery");
  no_memory.reset();
  EXPECT_EQ(answer, L"");
  EXPECT_TRUE(PlatformLines().empty());
}

const ThreadKind kThreadKinds[] = {{"InASingleThreadedApartment", COINIT_APARTMENTTHREADED},
                                   {"InTheMultithreadedApartment", COINIT_MULTITHREADED},
                                   {"WithoutCom", std::nullopt}};
INSTANTIATE_TEST_SUITE_P(, Wait, testing::ValuesIn(kThreadKinds), CaseName<ThreadKind>);

}  // namespace
