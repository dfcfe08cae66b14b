// Files that cannot be exchanged: held by another program, read-only, on another drive.
#include <gtest/gtest.h>

#include <optional>

#include "child_process.h"
#include "covering_fixture.h"
#include "import_patch.h"

namespace {

using Lines = std::vector<std::wstring>;

bool IsReadOnly(LPCWSTR path) {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

HMODULE Dll() { return GetModuleHandleW(L"solidworks_add_in.dll"); }

/// Calls the system's function, but not for a read-only target.
template <auto Function>
BOOL RespectReadOnly(LPCWSTR from, LPCWSTR to, auto option) {
  if (!IsReadOnly(to)) return Function(from, to, option);
  SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

/// Read-only files as on Windows, where nobody overwrites them: Wine lets root do so.
class ReadOnlyFilesAsOnWindows {
  ImportPatch m_move{Dll(), "MoveFileExW", RespectReadOnly<MoveFileExW, DWORD>};
  ImportPatch m_copy{Dll(), "CopyFileW", RespectReadOnly<CopyFileW, BOOL>};
};

class HardFile : public CoveringTest {
 protected:
  HardFile() {
    Put(L"prj\\A.sldprt", L"old");
    Put(L"dl\\A.sldprt", L"new");
    Put(L"dl\\B.sldprt", L"other");
  }

  std::wstring CopyFailed(const std::wstring& from, const std::wstring& to, int error) const {
    return L"CopyFile from " + At(from) + L" to " + At(to) + L" failed. Get Last Error: " +
           std::to_wstring(error) + L"<hr=0xa3012005>";
  }
  std::wstring MoveFailed(const std::wstring& from, const std::wstring& to, int error) const {
    return L"MoveFileEx from " + At(from) + L" to " + At(to) + L" failed. Get Last Error: " +
           std::to_wstring(error) + L"<hr=0xa3012006>";
  }
  std::wstring SwapFailed(const std::wstring& code) const {
    return CoverLine(1120, L"SwapFile failed. Current model file: " + At(L"prj\\A.sldprt") +
                               L", download file: " + At(L"dl\\A.sldprt") + L"<hr=0x" + code + L">");
  }
};

TEST_F(HardFile, HeldByAnotherProgramIsNoTargetForACopy) {
  const std::wstring target = Put(L"prj\\B.sldprt", L"older copy");
  Assemble(L"prj\\A.sldprt");
  {
    const FileHeldElsewhere held(target);
    CoverTold(At(L"dl\\B.sldprt"), kFailed);
  }
  EXPECT_EQ(m_home.LogLines(), Lines{CoverLine(1082, CopyFailed(L"dl\\B.sldprt", L"prj\\B.sldprt", 32))});
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                            L"prj\\A.sldprt = old", L"prj\\B.sldprt = older copy"}));
}

TEST_F(HardFile, HeldByAnotherProgramStaysTheComponentsFile) {
  Assemble(L"prj\\A.sldprt");
  std::optional<FileHeldElsewhere> held;
  m_host->GetFaults().Before(L"IComponent2::SetSuppression2", 1, [&] {
    m_component->hold = nullptr;
    held.emplace(At(L"prj\\A.sldprt"));
  });
  CoverTold(At(L"dl\\A.sldprt"), kFailed);
  held.reset();
  EXPECT_EQ(m_home.LogLines(), (Lines{SwapLine(1519, MoveFailed(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 32)),
                                      SwapFailed(L"a3012006")}));
  EXPECT_EQ(Files(),
            (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\", L"prj\\A.sldprt = old"}));
  EXPECT_TRUE(m_component->IsSuppressed());
}

TEST_F(HardFile, HeldByAnotherProgramIsADownloadThatCannotBeCopied) {
  Assemble(L"prj\\A.sldprt");
  {
    const FileHeldElsewhere held(At(L"dl\\A.sldprt"));
    CoverTold(At(L"dl\\A.sldprt"), kFailed);
  }
  EXPECT_EQ(m_home.LogLines(), (Lines{SwapLine(1530, CopyFailed(L"dl\\A.sldprt", L"prj\\A.sldprt", 32)),
                                      SwapFailed(L"a3012005")}));
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                            L"dl\\temp\\A.sldprt = old"}));
  EXPECT_TRUE(m_component->IsSuppressed());
}

TEST_F(HardFile, HeldByAnotherProgramIsAnOlderBackupThatCannotBeReplaced) {
  const std::wstring backup = Put(L"dl\\temp\\A.sldprt", L"older");
  Assemble(L"prj\\A.sldprt");
  {
    const FileHeldElsewhere held(backup);
    CoverTold(At(L"dl\\A.sldprt"), kFailed);
  }
  EXPECT_EQ(m_home.LogLines(), (Lines{SwapLine(1519, MoveFailed(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 5)),
                                      SwapFailed(L"a3012006")}));
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                            L"dl\\temp\\A.sldprt = older", L"prj\\A.sldprt = old"}));
}

TEST_F(HardFile, ReadOnlyIsNoTargetForACopy) {
  const std::wstring target = Put(L"prj\\B.sldprt", L"older copy");
  SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_READONLY);
  Assemble(L"prj\\A.sldprt");
  const ReadOnlyFilesAsOnWindows rule;
  CoverTold(At(L"dl\\B.sldprt"), kFailed);
  EXPECT_EQ(m_home.LogLines(), Lines{CoverLine(1082, CopyFailed(L"dl\\B.sldprt", L"prj\\B.sldprt", 5))});
  EXPECT_EQ(Files().back(), L"prj\\B.sldprt = older copy");
}

TEST_F(HardFile, ReadOnlyMovesToTheBackupAllTheSame) {
  SetFileAttributesW(At(L"prj\\A.sldprt").c_str(), FILE_ATTRIBUTE_READONLY);
  Assemble(L"prj\\A.sldprt");
  const ReadOnlyFilesAsOnWindows rule;
  EXPECT_EQ(Cover({At(L"dl\\A.sldprt")}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), Lines{});
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                            L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"}));
}

TEST_F(HardFile, ReadOnlyIsAnOlderBackupThatCannotBeReplaced) {
  SetFileAttributesW(Put(L"dl\\temp\\A.sldprt", L"older").c_str(), FILE_ATTRIBUTE_READONLY);
  Assemble(L"prj\\A.sldprt");
  const ReadOnlyFilesAsOnWindows rule;
  CoverTold(At(L"dl\\A.sldprt"), kFailed);
  EXPECT_EQ(m_home.LogLines(), (Lines{SwapLine(1519, MoveFailed(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 5)),
                                      SwapFailed(L"a3012006")}));
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                            L"dl\\temp\\A.sldprt = older", L"prj\\A.sldprt = old"}));
}

/// A system that does not say why: what failed has failed all the same.
template <class... Arguments>
BOOL FailWithoutAReason(Arguments...) {
  SetLastError(ERROR_SUCCESS);
  return FALSE;
}

DWORD FindNothingWithoutAReason(LPCWSTR) {
  SetLastError(ERROR_SUCCESS);
  return INVALID_FILE_ATTRIBUTES;
}

TEST_F(HardFile, IsNotMovedByASystemThatFailsWithoutAReason) {
  Assemble(L"prj\\A.sldprt");
  const ImportPatch move(Dll(), "MoveFileExW", FailWithoutAReason<LPCWSTR, LPCWSTR, DWORD>);
  CoverTold(At(L"dl\\A.sldprt"), kFailed);
  EXPECT_EQ(m_home.LogLines(), (Lines{SwapLine(1519, MoveFailed(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 0)),
                                      SwapFailed(L"a3012006")}));
  EXPECT_EQ(Files().back(), L"prj\\A.sldprt = old");
}

TEST_F(HardFile, IsNotCopiedByASystemThatFailsWithoutAReason) {
  Assemble(L"prj\\A.sldprt");
  const ImportPatch copy(Dll(), "CopyFileW", FailWithoutAReason<LPCWSTR, LPCWSTR, BOOL>);
  CoverTold(At(L"dl\\B.sldprt"), kFailed);
  CoverTold(At(L"dl\\A.sldprt"), kFailed);
  EXPECT_EQ(m_home.LogLines(), (Lines{CoverLine(1082, CopyFailed(L"dl\\B.sldprt", L"prj\\B.sldprt", 0)),
                                      SwapLine(1530, CopyFailed(L"dl\\A.sldprt", L"prj\\A.sldprt", 0)),
                                      SwapFailed(L"a3012005")}));
  EXPECT_EQ(Files().back(), L"dl\\temp\\A.sldprt = old");
}

TEST_F(HardFile, IsNotFoundByASystemThatFailsWithoutAReason) {
  m_folder.MakeFolder(L"dl\\temp");
  Assemble(L"prj\\A.sldprt");
  const ImportPatch attributes(Dll(), "GetFileAttributesW", FindNothingWithoutAReason);
  CoverTold(At(L"dl\\A.sldprt"), kFailed);
  EXPECT_EQ(m_home.LogLines(),
            (Lines{SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 0<hr=0xa3012003>"),
                   SwapFailed(L"a3012003")}));
  EXPECT_EQ(Files().back(), L"prj\\A.sldprt = old");
}

/// What stands in the place of the copy is no file.
TEST_F(HardFile, IsNoTargetWhereItIsAFolder) {
  m_folder.MakeFolder(L"prj\\B.sldprt");
  Assemble(L"prj\\A.sldprt");
  CoverTold(At(L"dl\\B.sldprt"), kFailed);
  EXPECT_EQ(m_home.LogLines(), Lines{CoverLine(1082, CopyFailed(L"dl\\B.sldprt", L"prj\\B.sldprt", 5))});
}

}  // namespace
