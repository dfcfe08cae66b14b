// The program with windows, run as a process.
#include <windows.h>

#include <gtest/gtest.h>

#include <process.h>

#include <string>

#include "temp_folder.h"

namespace {

class WindowProgramTest : public testing::Test {
 protected:
  /// Plays the script in a window. @return the exit code.
  intptr_t Play(std::wstring_view script) const {
    const std::wstring path = L"\"" + m_folder.WriteText(L"script.txt", script) + L"\"";
    const std::wstring record = L"\"" + m_folder.Path(L"record.txt") + L"\"";
    return _wspawnl(_P_WAIT, ProgramPath().c_str(), L"cad_host_window", L"--script", path.c_str(),
                    L"--record", record.c_str(), nullptr);
  }

  TempFolder m_folder;

 private:
  /// The program is in the folder "bin" next to the folder of the tests.
  static std::wstring ProgramPath() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring tests(path, std::wstring_view(path).rfind(L'\\'));
    return tests.substr(0, tests.rfind(L'\\')) + L"\\bin\\cad_host_window.exe";
  }
};

TEST_F(WindowProgramTest, EndsWithTheScriptAndRecordsIt) {
  EXPECT_EQ(Play(L"# a comment\nnew part\nproperty 名 = 螺栓\n"), 0);
  EXPECT_EQ(m_folder.ReadText(L"record.txt"), L"new part\r\nproperty 名 = 螺栓\r\n");
}

TEST_F(WindowProgramTest, SaysByItsExitCodeThatAnExpectationFailed) {
  EXPECT_EQ(Play(L"new part\nexpect active nothing\nnew part\n"), 1);
  EXPECT_EQ(m_folder.ReadText(L"record.txt"), L"new part\r\nexpect active nothing\r\nnew part\r\n");
}

TEST_F(WindowProgramTest, SaysByItsExitCodeThatTheScriptCouldNotBeRunToItsEnd) {
  EXPECT_EQ(Play(L"new part\nfrobnicate\nnew part\n"), 2);
  EXPECT_EQ(m_folder.ReadText(L"record.txt"), L"new part\r\n");
}

}  // namespace
