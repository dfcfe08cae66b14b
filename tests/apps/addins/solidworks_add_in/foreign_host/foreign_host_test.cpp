// What leaves the DLL in a host of the other ABI, which cannot catch an exception of ours: results, never
// exceptions.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "base/module_path.h"
#include "base/unique_handle.h"
#include "environment.h"
#include "temp_folder.h"

namespace {

constexpr DWORD kPatience = 60'000;  // ms
constexpr wchar_t kView[] = L"home\\config\\New TAVO SolidWorks AddOn\\View.json";
constexpr char kGoodView[] =
    R"({"name":"PLM","Menu":[{"name":"Log in","CallbackFunction":"PlmLogin","EnableMethod":"EnablePlmLogin"}]})";

using Lines = std::vector<std::string>;

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L'\\')); }

/// The DLL without the configuration that is installed beside it, and a platform root.
class ForeignHost : public testing::TestWithParam<const char*> {
 protected:
  ForeignHost()
      : m_home(L"TAVO_HOME", m_folder.MakeFolder(L"home")), m_data(L"PROGRAMDATA", m_folder.Path()) {
    const std::wstring built = FolderOf(FolderOf(ModulePath(nullptr))) + L"\\bin\\solidworks_add_in.dll";
    EXPECT_TRUE(CopyFileW(built.c_str(), m_folder.Path(L"add_in.dll").c_str(), TRUE));
  }

  /// Runs the host. @return what it printed, line by line; its exit code is `m_exitCode`.
  Lines Run(const std::wstring& scenario, const std::wstring& guard) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    const UniqueHandle output =
        OwnHandle(CreateFileW(m_folder.Path(L"output.txt").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                              &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::wstring program = FolderOf(ModulePath(nullptr)) + L"\\foreign_host.exe";
    std::wstring command = program + L" " + m_folder.Path(L"add_in.dll") + L" " + scenario + L" " + guard;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.get();
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                               &startup, &started));
    const UniqueHandle thread = OwnHandle(started.hThread);
    const UniqueHandle process = OwnHandle(started.hProcess);
    if (WaitForSingleObject(process.get(), kPatience) != WAIT_OBJECT_0) {
      ADD_FAILURE() << "the host hangs";
      TerminateProcess(process.get(), 1);
    }
    GetExitCodeProcess(process.get(), &m_exitCode);
    Lines lines;
    std::istringstream text(m_folder.Read(L"output.txt"));
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  Lines Run(const std::wstring& scenario) {
    const std::string guard = GetParam();
    return Run(scenario, std::wstring(guard.begin(), guard.end()));
  }

  /// What the host prints of a connection that fails with `code`.
  static Lines NotConnected(const std::string& code) {
    return {"ConnectToSW " + code, "IsConnected 00000000", "DllCanUnloadNow 00000000", "alive"};
  }

  /// The lines of the log that are errors.
  std::vector<std::wstring> Errors() const {
    std::vector<std::wstring> errors;
    if (!m_folder.Exists(L"home\\log\\SolidWorks.log")) return errors;
    std::wistringstream text(m_folder.ReadText(L"home\\log\\SolidWorks.log"));
    for (std::wstring line; std::getline(text, line);) {
      if (line.find(L" ERROR ") != std::wstring::npos) errors.push_back(line);
    }
    return errors;
  }

  void ExpectOneError(const std::wstring& naming) const {
    const std::vector<std::wstring> errors = Errors();
    ASSERT_EQ(errors.size(), 1u) << testing::PrintToString(errors);
    EXPECT_NE(errors[0].find(naming), std::wstring::npos) << testing::PrintToString(errors[0]);
  }

  TempFolder m_folder;
  DWORD m_exitCode = 0;

 private:
  ScopedEnvironment m_home;
  ScopedEnvironment m_data;
};

TEST_P(ForeignHost, OutlivesAMissingViewFile) {
  EXPECT_EQ(Run(L"connect"), NotConnected("a3013001"));
  ExpectOneError(L"View.json");
}

TEST_P(ForeignHost, OutlivesAMalformedViewFile) {
  m_folder.Write(kView, "{\n \"name\": }");
  EXPECT_EQ(Run(L"connect"), NotConnected("a3013001"));
  ExpectOneError(L"line 2, column 10");
}

TEST_P(ForeignHost, OutlivesAViewFileWithoutAMenu) {
  m_folder.Write(kView, R"({"name":"PLM"})");
  EXPECT_EQ(Run(L"connect"), NotConnected("80004003"));  // the command manager is used first
  ExpectOneError(L"ISldWorks::GetCommandManager");
}

TEST_P(ForeignHost, OutlivesANullCommandManager) {
  m_folder.Write(kView, kGoodView);
  EXPECT_EQ(Run(L"connect"), NotConnected("80004003"));
  ExpectOneError(L"ISldWorks::GetCommandManager");
}

TEST_P(ForeignHost, OutlivesAHostThatIsNoApplication) {
  EXPECT_EQ(Run(L"no-application"), NotConnected("80004003"));
  ExpectOneError(L"ISldWorks");
}

TEST_P(ForeignHost, OutlivesEveryMethodBySlotBeforeAConnection) {
  const Lines lines = Run(L"commands");

  EXPECT_EQ(std::count(lines.begin(), lines.end(), "slot 80004003"), 14) << testing::PrintToString(lines);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "slot 00000000"), 14);
  EXPECT_EQ(lines.back(), "alive");
  EXPECT_EQ(Errors().size(), 14u);
}

TEST_P(ForeignHost, OutlivesEveryMethodByNameBeforeAConnection) {
  const Lines lines = Run(L"invoke");

  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Invoke 80020009"), 14) << testing::PrintToString(lines);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "scode 80004003"), 14);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Invoke 00000000"), 14);
  EXPECT_EQ(lines.back(), "alive");
  EXPECT_EQ(Errors().size(), 14u);
}

std::string GuardName(const testing::TestParamInfo<const char*>& test) { return test.param; }
INSTANTIATE_TEST_SUITE_P(, ForeignHost, testing::Values("none", "ehsc", "eha", "seh"), GuardName);

/// An exception of the host's own passes the DLL's frames unseen: the host goes on, but the DLL stays loaded.
class ExceptionOfTheHost : public ForeignHost {};

TEST_P(ExceptionOfTheHost, PassesTheDllWhichStaysLoaded) {
  EXPECT_EQ(Run(L"throwing-host"),
            (Lines{"ConnectToSW e0000001", "IsConnected 00000000", "DllCanUnloadNow 00000001", "alive"}));
}

INSTANTIATE_TEST_SUITE_P(, ExceptionOfTheHost, testing::Values("ehsc", "eha", "seh"), GuardName);

TEST_F(ExceptionOfTheHost, ThatIsAFaultPassesTheDllWhichStaysLoaded) {
  EXPECT_EQ(Run(L"faulting-host", L"seh"),
            (Lines{"ConnectToSW e0000001", "IsConnected 00000000", "DllCanUnloadNow 00000001", "alive"}));
}

}  // namespace
