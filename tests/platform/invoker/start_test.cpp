#include <future>
#include <sstream>
#include <thread>

#include "CStringHelper.h"
#include "base/unique_handle.h"
#include "host_thread.h"
#include "invoker_fixture.h"
#include "message_boxes.h"
#include "plm_client/json_text.h"
#include "raw_server.h"

namespace {

constexpr ULONGLONG kAtOnce = 1'500;  // milliseconds, with room for a busy machine that starts a program

/// A client program in a folder of its own, which the invoker is to start.
class Start : public InvokerTest {
 protected:
  ~Start() override {
    if (const UniqueHandle process = Process()) {
      TerminateProcess(process.get(), 0);
      WaitForSingleObject(process.get(), 10'000);
    }
  }

  /// Puts the program there and configures it.
  void Install(const std::string& verb, std::string_view further_members = {}) {
    m_folder.MakeFolder(kFolder);
    m_folder.Write(kFolder + LR"(\behaviour.txt)", verb + " " + CStringHelper::UnicodeToUTF8(m_pipe));
    ASSERT_TRUE(CopyFileW(BuiltProgram().c_str(), Program().c_str(), TRUE));
    ConfigureProgram(Program(), further_members);
  }

  void ConfigureProgram(const std::wstring& path, std::string_view further_members = {}) {
    ConfigurePipe(",\"client\":" + plm_client::JsonString(CStringHelper::UnicodeToUTF8(path)) +
                  std::string(further_members));
  }

  std::wstring Program() const { return m_folder.Path(kFolder + L"\\PLM client.exe"); }

  /// What the program has found: its process id, command line and folder.
  std::vector<std::wstring> Found() const {
    std::vector<std::wstring> lines;
    if (!m_folder.Exists(kFolder + LR"(\started.txt)")) return lines;
    std::wistringstream text(m_folder.ReadText(kFolder + LR"(\started.txt)"));
    for (std::wstring line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  /// The program, if it was started and runs.
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

TEST_F(Start, HappensWhereThereIsNoPipe) {
  Install("serve");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Start, IsWithoutArgumentsInTheProgramsOwnFolder) {
  Install("serve");
  Invoke(L"QD_PLMLogin");
  const std::vector<std::wstring> found = Found();
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[1], L"\"" + Program() + L"\"");
  EXPECT_EQ(found[2], m_folder.Path(kFolder));
}

TEST_F(Start, HappensOnceForManyCommands) {
  Install("serve");
  Invoke(L"QD_PLMLogin");
  const std::vector<std::wstring> found = Found();
  CZALCmdInvoker second(L"Test", L"");
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served");
  EXPECT_EQ(second.Invoke(L"QD_PLMQuery", L""), L"served");
  EXPECT_EQ(Found(), found);
}

TEST_F(Start, DoesNotHappenWhereAClientServesThePipe) {
  Install("serve");
  m_client.emplace(plm_client::Settings{.pipe = m_pipe}, std::ref(m_script));
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_TRUE(Found().empty());
}

TEST_F(Start, DoesNotHappenForARequestThatCannotBeSent) {
  Install("serve");
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogin", std::wstring(64 * 1024 * 1024, L'x')), L"");
  ExpectOneLine(L"QD_PLMLogin", L"the request is over 64 MiB");
  EXPECT_TRUE(Found().empty());
}

TEST_F(Start, HandsNoHandleOn) {
  // given a file that this process holds alone, by a handle that could be inherited
  Install("serve");
  const std::wstring path = m_folder.Write(L"held.txt", "x");
  SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
  const auto open = [&] {
    return OwnHandle(CreateFileW(path.c_str(), GENERIC_READ, 0, &inheritable, OPEN_EXISTING, 0, nullptr));
  };
  UniqueHandle held = open();
  ASSERT_TRUE(held);

  // when the client is started and the handle closed here
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  held.reset();

  // then nobody holds the file any more
  EXPECT_TRUE(open());
}

TEST_F(Start, IsGivenUpAtOnceWhenTheProgramEnds) {
  Install("end");
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", Program() + L" ended without serving the pipe");
}

TEST_F(Start, IsAwaitedNoLongerThanConfigured) {
  Install("hang", ",\"startTimeoutMs\":700");
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_GE(watch.Milliseconds(), 700u);
  EXPECT_LT(watch.Milliseconds(), 700 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", Program() + L" did not serve the pipe");
}

TEST_F(Start, ServesTheThreadsWindowsMeanwhile) {
  Install("hang", ",\"startTimeoutMs\":1500");
  const HostWindow window;
  std::future<bool> served = std::async(std::launch::async, [&] {
    Sleep(300);
    return window.Send().has_value() && window.Repaint();
  });
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_EQ(served.wait_for(std::chrono::seconds(0)), std::future_status::ready);
  DrainMessages();
  EXPECT_TRUE(served.get());
}

/// A client that serves one host at a time, and another host that is there as soon as the pipe is.
class StartBesideAnotherHost : public Start {
 protected:
  StartBesideAnotherHost() {
    Install("serve-one");
    m_window.OnSent([this] {
      const Stopwatch watch;
      while (!m_otherHost && watch.Milliseconds() < 10'000) {
        Sleep(10);
        m_otherHost = OpenPipe(m_pipe);
      }
      m_onceThere();
      return 1;
    });
    // Lies in this thread's queue until the invoker, having started the client, serves the thread's windows
    // for the first time: so the other host always comes first.
    std::thread([this] { SendNotifyMessageW(m_window.Handle(), HostWindow::kSent, 0, 0); }).join();
  }

  UniqueHandle m_otherHost;
  std::function<void()> m_onceThere = [] {};

 private:
  HostWindow m_window;
};

TEST_F(StartBesideAnotherHost, AwaitsTheBusyPipeForTwoSeconds) {
  Stopwatch watch;
  m_onceThere = [&] { watch = Stopwatch(); };
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_GE(watch.Milliseconds(), 1'900u);
  EXPECT_LT(watch.Milliseconds(), 2'000 + kAtOnce);
  EXPECT_TRUE(m_otherHost);
  ExpectOneLine(L"QD_PLMLogin", L"stayed busy for two seconds");
}

TEST_F(StartBesideAnotherHost, ConnectsAsSoonAsThePipeIsFree) {
  std::jthread leaving;
  m_onceThere = [&] {
    leaving = std::jthread([&] {
      Sleep(500);
      m_otherHost.reset();
    });
  };
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
  EXPECT_TRUE(leaving.joinable()) << "the other host came first";
  EXPECT_TRUE(PlatformLines().empty());
}

TEST_F(Start, OfAClientThatDiesWhileACommandWaitsEndsTheWaitAtOnce) {
  Install("die");
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_GE(watch.Milliseconds(), 600u);
  EXPECT_LT(watch.Milliseconds(), 600 + kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", L"closed the connection");
}

TEST_F(Start, HappensAnewAfterTheClientDied) {
  Install("die");
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  m_folder.Write(kFolder + LR"(\behaviour.txt)", "serve " + CStringHelper::UnicodeToUTF8(m_pipe));
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"served");
}

TEST_F(Start, OfAMissingProgramFailsWithoutABox) {
  MessageBoxRecorder boxes;
  ConfigureProgram(m_folder.Path(L"missing.exe"));
  const Stopwatch watch;
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", m_folder.Path(L"missing.exe") + L" cannot be started (error 2)");
}

TEST_F(Start, OfAFileThatIsNoProgramFailsWithoutABox) {
  MessageBoxRecorder boxes;
  ConfigureProgram(m_folder.Write(L"client.exe", "no program"));
  EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin", L"client.exe cannot be started");
}

TEST_F(Start, LeavesTheThreadsErrorModeAsItWas) {
  const DWORD before = GetThreadErrorMode();
  ConfigureProgram(m_folder.Path(L"missing.exe"));
  Invoke(L"QD_PLMLogin");
  EXPECT_EQ(GetThreadErrorMode(), before);
}

TEST_F(Start, NeedsAFullPath) {
  for (const wchar_t* path : {L"cmd.exe", L"..\\client.exe", L"C:client.exe", L"\\client.exe"}) {
    ConfigureProgram(path);
    EXPECT_EQ(Invoke(L"QD_PLMLogin"), L"");
    ExpectOneLine(L"QD_PLMLogin", L"is not a full path");
  }
}

}  // namespace
