// The program with windows, run as a process.
#include <windows.h>

#include <gtest/gtest.h>

#include <process.h>

#include <string>

#include "program_folder.h"
#include "temp_folder.h"

namespace {

class WindowProgramTest : public testing::Test {
 protected:
  /// Plays the script in a window. @return the exit code.
  intptr_t Play(std::wstring_view script) const {
    const std::wstring path = L"\"" + m_folder.WriteText(L"script.txt", script) + L"\"";
    const std::wstring record = L"\"" + m_folder.Path(L"record.txt") + L"\"";
    return _wspawnl(_P_WAIT, InBin(L"cad_host_window.exe").c_str(), L"cad_host_window", L"--script",
                    path.c_str(), L"--record", record.c_str(), nullptr);
  }

  TempFolder m_folder;
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
