#include <windows.h>

#include <string>
#include <vector>

#include "base/system_text.h"
#include "import_patch.h"
#include "start_fixture.h"

namespace {

TEST_F(ClientStart, OfAMissingProgramFailsAtOnce) {
  ConfigureProgram(m_folder.Path(L"missing.exe"));
  const Stopwatch watch;
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  ExpectOneLine(L"QD_PLMLogin", m_folder.Path(L"missing.exe") + L" cannot be started: " +
                                    SystemText(ERROR_FILE_NOT_FOUND) + L" (error 2)");
}

TEST_F(ClientStart, OfAProgramInAMissingFolderSaysThatThePathIsNotThere) {
  ConfigureProgram(m_folder.Path(L"missing\\client.exe"));
  EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
  ExpectOneLine(L"QD_PLMLogin",
                L"client.exe cannot be started: " + SystemText(ERROR_PATH_NOT_FOUND) + L" (error 3)");
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

TEST_F(ClientStart, NeedsAFullPath) {
  for (const wchar_t* path : {L"cmd.exe", L"..\\client.exe", L"C:client.exe", L"\\client.exe"}) {
    ConfigureProgram(path);
    EXPECT_EQ(InvokeUnreached(L"QD_PLMLogin"), L"");
    ExpectOneLine(L"QD_PLMLogin", L"is not a full path");
  }
}

}  // namespace
