#include <windows.h>
// After windows.h, which they need.
#include <ole2.h>
#include <wrl/client.h>

#include <future>
#include <sstream>
#include <thread>

#include "CStringHelper.h"
#include "base/system_text.h"
#include "base/unique_handle.h"
#include "environment.h"
#include "host_object.h"
#include "host_thread.h"
#include "import_patch.h"
#include "invoker_fixture.h"
#include "plm_client/json_text.h"
#include "raw_server.h"
#include "system_function.h"

namespace {

constexpr ULONGLONG kAtOnce = 1'500;  // milliseconds, long enough for a busy machine that starts a program

/// A client program in its own folder, for the invoker to start.
class ClientStart : public InvokerFixture {
 protected:
  ~ClientStart() override {
    if (const UniqueHandle process = Process()) {
      TerminateProcess(process.get(), 0);
      WaitForSingleObject(process.get(), 10'000);
    }
  }

  /// Copies the program into the folder and configures it.
  /// @param verb what the program does, see started_client/main.cpp.
  void Install(const std::string& verb, std::string_view further_members = {}) {
    m_folder.MakeFolder(kFolder);
    m_folder.Write(kFolder + LR"(\behaviour.txt)", verb + " " + CStringHelper::UnicodeToUTF8(m_pipe));
    ASSERT_TRUE(CopyFileW(BuiltProgram().c_str(), Program().c_str(), TRUE));
    ConfigureProgram(Program(), further_members);
  }

  /// Bytes through which another process can get an interface pointer to `object`.
  static std::string MarshalForProcesses(IDispatch& object) {
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

  void ConfigureProgram(const std::wstring& path, std::string_view further_members = {}) {
    ConfigurePipe(",\"client\":" + plm_client::JsonString(CStringHelper::UnicodeToUTF8(path)) +
                  std::string(further_members));
  }

  std::wstring Program() const { return m_folder.Path(kFolder + L"\\PLM client.exe"); }

  /// The lines that the program wrote at its start: process id, command line and folder.
  std::vector<std::wstring> Found() const {
    std::vector<std::wstring> lines;
    if (!m_folder.Exists(kFolder + LR"(\started.txt)")) return lines;
    std::wistringstream text(m_folder.ReadText(kFolder + LR"(\started.txt)"));
    for (std::wstring line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  /// The process, or null if it was not started or has ended.
  UniqueHandle Process() const {
    const std::vector<std::wstring> found = Found();
    if (found.empty()) return nullptr;
    return OwnHandle(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, std::stoul(found[0])));
  }

  const std::wstring kFolder = L"the \u6D4B client";

 private:
  static std::wstring BuiltProgram() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind(L'\\')) + L"\\invoker_test_client.exe";
  }
};

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

TEST_F(ClientStart, OfAMissingProgramFailsAtOnce) {
  ConfigureProgram(m_folder.Path(L"missing.exe"));
  const Stopwatch watch;
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", m_folder.Path(L"missing.exe") + L" cannot be started: " +
                                    SystemText(ERROR_FILE_NOT_FOUND) + L" (error 2)");
}

TEST_F(ClientStart, OfAFileThatIsNotAProgramFails) {
  ConfigureProgram(m_folder.Write(L"client.exe", "no program"));
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"client.exe cannot be started");
}

/// For the life of the object, every start of a program fails; its arguments are recorded.
class FailingStarts {
 public:
  struct Start {
    std::wstring program, command_line, folder;
    DWORD error_mode;
  };

  FailingStarts() { starts.clear(); }

  const std::vector<Start>& Starts() const { return starts; }

 private:
  static BOOL WINAPI Record(LPCWSTR program, LPWSTR command_line, LPSECURITY_ATTRIBUTES,
                            LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCWSTR folder, LPSTARTUPINFOW,
                            LPPROCESS_INFORMATION) {
    starts.push_back({program, command_line, folder, GetThreadErrorMode()});
    SetLastError(ERROR_BAD_NETPATH);
    return FALSE;
  }

  static inline std::vector<Start> starts;
  const ImportPatch m_patch{GetModuleHandleW(nullptr), "CreateProcessW", &Record};
};

TEST_F(ClientStart, KeepsTheSystemFromShowingBoxesAndRestoresTheThreadsErrorMode) {
  const DWORD before = GetThreadErrorMode();
  ASSERT_EQ(before & SEM_FAILCRITICALERRORS, 0u);
  const FailingStarts failing;
  ConfigureProgram(L"C:\\PLM\\client.exe");
  InvokeUnreached(L"QD_PLMLogin");
  ASSERT_EQ(failing.Starts().size(), 1u);
  const DWORD expected = SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX;
  EXPECT_EQ(failing.Starts()[0].error_mode & expected, expected);
  EXPECT_EQ(GetThreadErrorMode(), before);
}

TEST_F(ClientStart, TakesFullPathsOfEachKind) {
  const struct {
    const wchar_t* program;
    const wchar_t* folder;
  } cases[] = {
      {LR"(C:\PLM\client.exe)", LR"(C:\PLM)"},
      {LR"(C:\client.exe)", LR"(C:\)"},
      {LR"(\\server\share\PLM\client.exe)", LR"(\\server\share\PLM)"},
      {LR"(\\?\C:\PLM\client.exe)", LR"(C:\PLM)"},
      {LR"(\\?\C:\client.exe)", LR"(C:\)"},
      {LR"(\\?\UNC\server\share\PLM\client.exe)", LR"(\\server\share\PLM)"},
  };
  for (const auto& path : cases) {
    const FailingStarts failing;
    ConfigureProgram(path.program);
    EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
    ExpectOneLine(L"QD_PLMLogin",
                  path.program + (L" cannot be started: " + SystemText(ERROR_BAD_NETPATH)) + L" (error 53)");
    ASSERT_EQ(failing.Starts().size(), 1u);
    EXPECT_EQ(failing.Starts()[0].program, path.program);
    EXPECT_EQ(failing.Starts()[0].command_line, L"\"" + std::wstring(path.program) + L"\"");
    EXPECT_EQ(failing.Starts()[0].folder, path.folder);
  }
}

TEST_F(ClientStart, HappensForAPathWithThePrefixForLongPaths) {
  Install("serve");
  ConfigureProgram(LR"(\\?\)" + Program());
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  const std::vector<std::wstring> found = Found();
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[2], m_folder.Path(kFolder));
}

TEST_F(ClientStart, HappensForAPathWithAnEnvironmentVariable) {
  Install("serve");
  const ScopedEnvironment folder(L"TAVO_TEST_PLM", m_folder.Path());
  ConfigureProgram(L"%TAVO_TEST_PLM%\\" + kFolder + L"\\PLM client.exe");
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

TEST_F(ClientStart, NeedsAFullPath) {
  for (const wchar_t* path : {L"cmd.exe", L"..\\client.exe", L"C:client.exe", L"\\client.exe"}) {
    ConfigureProgram(path);
    EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
    ExpectOneLine(L"QD_PLMLogin", L"is not a full path");
  }
}

}  // namespace
