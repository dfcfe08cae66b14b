// The program that runs the tests of the kit, and the file in front of it, with lists of a few small
// programs.
#include <gtest/gtest.h>

#include <windows.h>

#include <sstream>

#include "add_in_dll.h"
#include "base/unique_handle.h"
#include "base/unique_registry_key.h"
#include "installations.h"
#include "plan.h"
#include "program_folder.h"
#include "temp_folder.h"

namespace {

constexpr const wchar_t* kHost = L"SOFTWARE\\SolidWorks";

struct FinishedRun {
  DWORD exit_code = 99;
  std::string printed;

  std::string LastLine() const {
    const std::string text = printed.substr(0, printed.find_last_not_of("\r\n") + 1);
    return text.substr(text.rfind('\n') + 1);
  }
};

/// The host's key in the registry, which must not be there before.
class HostKey {
 public:
  HostKey() {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, kHost, &key), ERROR_SUCCESS);
    m_key.reset(key);
  }
  HostKey(const HostKey&) = delete;
  HostKey& operator=(const HostKey&) = delete;
  ~HostKey() {
    m_key.reset();
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kHost);
  }

 private:
  UniqueRegistryKey m_key;
};

class KitProgram : public testing::Test {
 protected:
  /// Takes away what other test programs leave in the registry that they share. Unregistering itself leaves
  /// the host's key and the list of its add-ins, empty: they may be the host's own.
  void SetUp() override {
    AddInDll().UnregisterServer();
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, (std::wstring(kHost) + L"\\AddIns").c_str());
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kHost);
    ASSERT_EQ(FoundInstallations(), std::vector<std::wstring>{}) << "an earlier run has left them";
    m_folder.Write(L"left_out.txt", "");
  }

  /// Runs a command line and waits until it ends.
  FinishedRun Execute(std::wstring command) const {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    UniqueHandle output = OwnHandle(CreateFileW(m_folder.Path(L"printed").c_str(), GENERIC_WRITE,
                                                FILE_SHARE_READ, &inheritable, CREATE_ALWAYS, 0, nullptr));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output.get();
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                               &started));
    const UniqueHandle process = OwnHandle(started.hProcess), thread = OwnHandle(started.hThread);
    WaitForSingleObject(process.get(), INFINITE);
    output.reset();
    FinishedRun run;
    GetExitCodeProcess(process.get(), &run.exit_code);
    run.printed = m_folder.Read(L"printed");
    return run;
  }

  /// Runs the programs of a list.
  FinishedRun RunTests(const std::string& programs) const {
    m_folder.Write(L"test_programs.txt", programs);
    return Execute(L"\"" + BesideTests(L"run_tests.exe") + Folders());
  }

  std::wstring Folders() const {
    return L"\" \"" + m_folder.Path() + L"\" \"" + m_folder.Path(L"the results") + L"\"";
  }

  TempFolder m_folder;
};

/// How many tests the program has whose names match.
std::string CountOf(const std::string& listing) {
  std::istringstream lines(listing);
  int count = 0;
  for (std::string line; std::getline(lines, line);) count += line.starts_with("  ");
  return std::to_string(count);
}

}  // namespace

TEST_F(KitProgram, CountsTheTestsOfAllPrograms) {
  const std::string tests = CountOf(Execute(BesideTests(L"text_test.exe --gtest_list_tests")).printed);
  const FinishedRun run = RunTests("text_test 60\ntext_test 60\n");
  EXPECT_EQ(run.exit_code, 0u) << run.printed;
  const std::string once = "text_test: " + tests + " passed, 0 failed\r\n";
  EXPECT_EQ(run.printed, once + once + std::to_string(2 * std::stoi(tests)) + " passed, 0 failed\r\n");
  EXPECT_TRUE(m_folder.Exists(L"the results\\text_test.txt"));
}

TEST_F(KitProgram, CountsAProgramThatCrashesAsOneFailure) {
  m_folder.Write(L"left_out.txt",
                 "crashing_program "
                 "Fault.C*:Fault.D*:Fault.F*:Fault.I*:Fault.O*:Fault.R*:Fault.S*:Fault.T*:Fault.W* why\n");
  const FinishedRun run = RunTests("crashing_program 60\nno_such_test 60\n");
  EXPECT_EQ(run.exit_code, 1u);
  EXPECT_NE(
      run.printed.find("crashing_program: 0 passed, 1 failed\r\n    failed: it ended early\r\n    see "),
      std::string::npos)
      << run.printed;
  EXPECT_NE(run.printed.find("no_such_test: 0 passed, 1 failed\r\n    failed: it cannot be started\r\n"),
            std::string::npos)
      << run.printed;
  EXPECT_EQ(run.LastLine(), "0 passed, 2 failed");
}

TEST_F(KitProgram, RefusesAMachineWithTheHost) {
  const HostKey host;
  const FinishedRun run = RunTests("text_test 60\n");
  EXPECT_EQ(run.exit_code, 2u);
  EXPECT_NE(run.printed.find("is installed on this machine"), std::string::npos) << run.printed;
  EXPECT_EQ(run.LastLine(), "  HKEY_LOCAL_MACHINE\\SOFTWARE\\SolidWorks");
  EXPECT_FALSE(m_folder.Exists(L"the results"));
}

TEST_F(KitProgram, NamesAListThatIsMissing) {
  const FinishedRun run = Execute(L"\"" + BesideTests(L"run_tests.exe") + Folders());
  EXPECT_EQ(run.exit_code, 2u);
  EXPECT_TRUE(run.LastLine().starts_with("run_tests: cannot read ")) << run.printed;
  EXPECT_TRUE(run.LastLine().ends_with("\\test_programs.txt")) << run.printed;
}

TEST_F(KitProgram, IsStartedByTheCommandFile) {
  m_folder.Write(L"test_programs.txt", "text_test 60\n");
  const FinishedRun run = Execute(L"cmd /c \"\"" + BesideTests(L"..\\run-tests.cmd") + Folders() + L"\"");
  EXPECT_EQ(run.exit_code, 0u);
  EXPECT_TRUE(run.LastLine().ends_with(" passed, 0 failed")) << run.printed;
}

// A filter that fits no test is one that was forgotten when the test was renamed.
TEST_F(KitProgram, LeavesOutOnlyTestsThatExist) {
  const std::string lines = ReadFileBytes(BesideTests(L"left_out.txt"));
  std::istringstream left_out(lines);
  for (std::string line; std::getline(left_out, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    std::istringstream words(line);
    std::string program, filters, filter;
    words >> program >> filters;
    if (filters == "*") continue;
    std::istringstream each(filters);
    while (std::getline(each, filter, ':')) {
      const std::string command = program + ".exe --gtest_list_tests --gtest_filter=" + filter;
      const std::wstring path = BesideTests(std::wstring(command.begin(), command.end()));
      EXPECT_NE(CountOf(Execute(path).printed), "0") << program << " has no test " << filter;
    }
  }
  EXPECT_NO_THROW(ReadPlan(ReadFileBytes(BesideTests(L"test_programs.txt")), lines));
}
