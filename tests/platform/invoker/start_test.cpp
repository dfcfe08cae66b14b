#include <windows.h>
// After windows.h, which they need.
#include <ole2.h>
#include <wrl/client.h>

#include <future>
#include <thread>

#include "CStringHelper.h"
#include "base/unique_handle.h"
#include "host_object.h"
#include "host_thread.h"
#include "raw_server.h"
#include "start_fixture.h"

namespace {

TEST_F(ClientStart, HappensIfThereIsNoPipe) {
  Install("serve");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(ClientStart, PassesNoArgumentsAndUsesTheProgramsFolder) {
  Install("serve");
  Invoke(L"QD_PLMLogin");
  const std::vector<std::wstring> found = Found();
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[1], L"\"" + Program() + L"\"");
  EXPECT_EQ(found[2], m_folder.Path(kFolder));
}

TEST_F(ClientStart, HappensOnceForManyCommands) {
  Install("serve");
  Invoke(L"QD_PLMLogin");
  const std::vector<std::wstring> found = Found();
  CZALCmdInvoker second(L"Test", L"");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served");
  EXPECT_EQ(second.Invoke(L"QD_PLMQuery", L""), L"served");
  EXPECT_EQ(Found(), found);
}

TEST_F(ClientStart, DoesNotHappenIfAClientServesThePipe) {
  Install("serve");
  m_client.emplace(plm_client::Settings{.pipe = m_pipe}, std::ref(m_script));
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_TRUE(Found().empty());
}

TEST_F(ClientStart, DoesNotHappenForARequestThatCannotBeSent) {
  Install("serve");
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogin", std::wstring(64 * 1024 * 1024, L'x')), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the request is over 64 MiB");
  EXPECT_TRUE(Found().empty());
}

TEST_F(ClientStart, PassesNoHandleToTheClient) {
  // given a file that only this process may open, with an inheritable handle
  Install("serve");
  const std::wstring path = m_folder.Write(L"held.txt", "x");
  SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
  const auto open = [&] {
    return OwnHandle(CreateFileW(path.c_str(), GENERIC_READ, 0, &inheritable, OPEN_EXISTING, 0, nullptr));
  };
  UniqueHandle held = open();
  ASSERT_TRUE(held);

  // when the client is started and this process closes the handle
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  held.reset();

  // then no process has the file open
  EXPECT_TRUE(open());
}

TEST_F(ClientStart, FailsAtOnceIfTheProgramEnds) {
  Install("end");
  const Stopwatch watch;
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", Program() + L" ended without serving the pipe");
}

TEST_F(ClientStart, TimesOutAsConfigured) {
  Install("hang", ",\"startTimeoutMs\":700");
  const Stopwatch watch;
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_GE(watch.Milliseconds(), 700u);
  EXPECT_LT(watch.Milliseconds(), 700 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", Program() + L" did not serve the pipe");
}

TEST_F(ClientStart, ServesTheThreadsWindowsMeanwhile) {
  Install("hang", ",\"startTimeoutMs\":1500");
  const HostWindow window;
  std::future<bool> served = std::async(std::launch::async, [&] {
    Sleep(300);
    return window.Send().has_value() && window.Repaint();
  });
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_EQ(served.wait_for(std::chrono::seconds(0)), std::future_status::ready);
  DrainMessages();
  EXPECT_TRUE(served.get());
}

TEST_F(ClientStart, OfAClientThatDiesWhileACommandWaitsEndsTheWaitAtOnce) {
  Install("die");
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_GE(watch.Milliseconds(), 600u);
  EXPECT_LT(watch.Milliseconds(), 600 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", L"closed the connection");
}

TEST_F(ClientStart, HappensAgainAfterTheClientDied) {
  Install("die");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  m_folder.Write(kFolder + LR"(\behaviour.txt)", "serve " + CStringHelper::UnicodeToUTF8(m_pipe));
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
}

TEST_F(ClientStart, DoesNotHappenForACommandThatDoesNotStartTheClient) {
  Install("serve");
  m_boxes.Expect(IDOK);
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogout", L"", {.starts_client = false}), L"");
  ExpectOneLine(L"QD_PLMLogout", L"this command does not start the client program");
  EXPECT_TRUE(Found().empty());
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogout", L"", {.starts_client = false}), L"served");
}

TEST_F(ClientStart, WithATimeoutOfZeroIsNotAwaited) {
  Install("serve", ",\"startTimeoutMs\":0");
  const Stopwatch watch;
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", L"did not serve the pipe");

  // then the program runs, and a later command reaches it
  for (int i = 0; i < 500 && !OpenPipe(m_pipe); ++i) Sleep(10);
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
}

TEST_F(ClientStart, IsNotAwaitedAnyMoreAfterEsc) {
  Install("hang");
  const HostWindow window;
  const std::jthread person([&] {
    Sleep(300);
    PostMessageW(window.Handle(), WM_KEYDOWN, VK_ESCAPE, 0);
  });
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), 300 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", L"cancelled by the user");
}

/// Bytes through which another process can get an interface pointer to `object`.
std::string MarshalForProcesses(IDispatch& object) {
  Microsoft::WRL::ComPtr<IStream> stream;
  HGLOBAL memory = nullptr;
  CreateStreamOnHGlobal(nullptr, TRUE, &stream);
  EXPECT_EQ(S_OK, CoMarshalInterface(stream.Get(), __uuidof(IDispatch), &object, MSHCTX_LOCAL, nullptr,
                                     MSHLFLAGS_NORMAL));
  GetHGlobalFromStream(stream.Get(), &memory);
  const std::string bytes(static_cast<const char*>(GlobalLock(memory)), GlobalSize(memory));
  GlobalUnlock(memory);
  return bytes;
}

TEST_F(ClientStart, ServesComCallsOfTheStartedClient) {
  // given an object of the host that another process can call
  const Apartment apartment{COINIT_APARTMENTTHREADED};
  HostObject object;
  Install("call");
  m_folder.Write(kFolder + LR"(\object.bin)", MarshalForProcesses(object));

  // when the client calls it before it answers
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served 42");

  EXPECT_EQ(object.called_on, GetCurrentThreadId());
  CoDisconnectObject(&object, 0);
}

}  // namespace
