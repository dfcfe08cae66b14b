#include <windows.h>

#include <functional>
#include <thread>

#include "base/unique_handle.h"
#include "import_patch.h"
#include "raw_server.h"
#include "start_fixture.h"
#include "system_function.h"

namespace {

/// A client that serves one host at a time, and another host that connects as soon as the pipe exists: before
/// the call that starts the program returns.
class ClientStartBesideAnotherHost : public ClientStart {
 protected:
  ClientStartBesideAnotherHost() {
    running = this;
    Install("serve-one");
  }

  UniqueHandle m_otherHost;
  std::function<void()> m_onConnected = [] {};

 private:
  static BOOL WINAPI StartAndConnect(LPCWSTR program, LPWSTR command_line, LPSECURITY_ATTRIBUTES process,
                                     LPSECURITY_ATTRIBUTES thread, BOOL inherits, DWORD flags,
                                     LPVOID environment, LPCWSTR folder, LPSTARTUPINFOW startup,
                                     LPPROCESS_INFORMATION started) {
    if (!kCreateProcess(program, command_line, process, thread, inherits, flags, environment, folder, startup,
                        started)) {
      return FALSE;
    }
    const Stopwatch watch;
    while (!running->m_otherHost && watch.Milliseconds() < 10'000) {
      Sleep(10);
      running->m_otherHost = OpenPipe(running->m_pipe);
    }
    running->m_onConnected();
    return TRUE;
  }

  static inline const auto kCreateProcess =
      SystemFunction<decltype(CreateProcessW)>(L"kernel32.dll", "CreateProcessW");
  static inline ClientStartBesideAnotherHost* running;
  const ImportPatch m_patch{GetModuleHandleW(nullptr), "CreateProcessW", &StartAndConnect};
};

TEST_F(ClientStartBesideAnotherHost, WaitsTwoSecondsForTheBusyPipe) {
  Stopwatch watch;
  m_onConnected = [&] { watch = Stopwatch(); };
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_GE(watch.Milliseconds(), 1'900u);
  EXPECT_LT(watch.Milliseconds(), 2'000 + kAtOnce);
  EXPECT_TRUE(m_otherHost);
  ExpectOneLine(L"QD_PLMLogin", L"stayed busy for two seconds");
}

TEST_F(ClientStartBesideAnotherHost, ConnectsAsSoonAsThePipeIsFree) {
  std::jthread leaving;
  m_onConnected = [&] {
    leaving = std::jthread([&] {
      Sleep(500);
      m_otherHost.reset();
    });
  };
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_TRUE(leaving.joinable()) << "the other host connected first";
  EXPECT_TRUE(PlatformLines().empty());
}

}  // namespace
