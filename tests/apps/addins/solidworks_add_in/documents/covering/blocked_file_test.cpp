// Files that cannot be moved or copied: open in another program, read-only, or the system fails.
#include <gtest/gtest.h>

#include <optional>

#include "child_process.h"
#include "covering_fixture.h"
#include "import_patch.h"
#include "list_difference.h"
#include "result_codes.h"

namespace {

bool IsReadOnly(LPCWSTR path) {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

HMODULE Dll() { return GetModuleHandleW(L"solidworks_add_in.dll"); }

/// Calls the system's function, but fails for a read-only target.
template <auto Function>
BOOL RespectReadOnly(LPCWSTR from, LPCWSTR to, auto option) {
  if (!IsReadOnly(to)) return Function(from, to, option);
  SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

/// As for a file whose owner denies it.
DWORD WINAPI DenyAttributesOfA(LPCWSTR path) {
  if (!std::wstring_view(path).ends_with(L"\\prj\\A.sldprt")) return GetFileAttributesW(path);
  SetLastError(ERROR_ACCESS_DENIED);
  return INVALID_FILE_ATTRIBUTES;
}

/// Read-only files cannot be overwritten, as on Windows; Wine overwrites them if it runs as root.
class ReadOnlyFilesAsOnWindows {
  ImportPatch m_move{Dll(), "MoveFileExW", RespectReadOnly<MoveFileExW, DWORD>};
  ImportPatch m_copy{Dll(), "CopyFileW", RespectReadOnly<CopyFileW, BOOL>};
};

class BlockedFile : public CoveringFixture {
 protected:
  BlockedFile() {
    Put(L"prj\\A.sldprt", L"old");
    Put(L"dl\\A.sldprt", L"new");
    Put(L"dl\\B.sldprt", L"other");
  }

  std::wstring NotCopied(const std::wstring& from, const std::wstring& to, int error) const {
    return NotCopiedLine(At(from), At(to), error);
  }
  std::wstring NotMoved(const std::wstring& from, const std::wstring& to, int error) const {
    return NotMovedLine(At(from), At(to), error);
  }
  std::wstring NotCopiedAfterTheMove(const std::wstring& from, const std::wstring& to, int error) const {
    return SwapLine(1530, CopyFailed(At(from), At(to), error), hr::kCopyFailed);
  }
  std::wstring SwapFailed(HRESULT code) const {
    return SwapFailedLine(At(L"prj\\A.sldprt"), At(L"dl\\A.sldprt"), code);
  }
};

TEST_F(BlockedFile, CannotBeReplacedByACopyIfAnotherProgramHasItOpen) {
  const std::wstring target = Put(L"prj\\B.sldprt", L"older copy");
  Assemble(L"prj\\A.sldprt");
  {
    const FileHeldElsewhere held(target);
    CoverExpectingBox(At(L"dl\\B.sldprt"), shown::kReplacementFailed);
  }
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopied(L"dl\\B.sldprt", L"prj\\B.sldprt", 32)});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                                     L"prj\\A.sldprt = old", L"prj\\B.sldprt = older copy"});
}

TEST_F(BlockedFile, OfTheComponentIsNotMovedIfAnotherProgramHasItOpen) {
  m_host->GetQuirks().Set(cad_host::Quirk::kHeldFiles, false);
  Assemble(L"prj\\A.sldprt");
  std::optional<FileHeldElsewhere> held;
  m_host->GetFaults().Before(L"IComponent2::SetSuppression2", 1, [&] { held.emplace(At(L"prj\\A.sldprt")); });
  CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  held.reset();
  EXPECT_EQ(m_home.LogLines(), (Texts{NotMoved(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 32),
                                      SwapFailed(hr::kMoveToBackupFailed)}));
  EXPECT_SAME_ENTRIES(
      Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\", L"prj\\A.sldprt = old"});
  EXPECT_TRUE(m_component->IsSuppressed());
}

TEST_F(BlockedFile, OfTheDownloadIsNotCopiedIfAnotherProgramHasItOpen) {
  Assemble(L"prj\\A.sldprt");
  {
    const FileHeldElsewhere held(At(L"dl\\A.sldprt"));
    CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  }
  EXPECT_EQ(m_home.LogLines(), (Texts{NotCopiedAfterTheMove(L"dl\\A.sldprt", L"prj\\A.sldprt", 32),
                                      SwapFailed(hr::kCopyFailed)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                                     L"dl\\temp\\A.sldprt = old"});
  EXPECT_TRUE(m_component->IsSuppressed());
}

TEST_F(BlockedFile, OfAnOlderBackupIsNotReplacedIfAnotherProgramHasItOpen) {
  const std::wstring backup = Put(L"dl\\temp\\A.sldprt", L"older");
  Assemble(L"prj\\A.sldprt");
  {
    const FileHeldElsewhere held(backup);
    CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  }
  EXPECT_EQ(m_home.LogLines(), (Texts{NotMoved(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 5),
                                      SwapFailed(hr::kMoveToBackupFailed)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                                     L"dl\\temp\\A.sldprt = older", L"prj\\A.sldprt = old"});
}

TEST_F(BlockedFile, CannotBeReplacedByACopyIfItIsReadOnly) {
  const std::wstring target = Put(L"prj\\B.sldprt", L"older copy");
  SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_READONLY);
  Assemble(L"prj\\A.sldprt");
  const ReadOnlyFilesAsOnWindows rule;
  CoverExpectingBox(At(L"dl\\B.sldprt"), shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopied(L"dl\\B.sldprt", L"prj\\B.sldprt", 5)});
  EXPECT_EQ(Files().back(), L"prj\\B.sldprt = older copy");
}

TEST_F(BlockedFile, OfTheComponentIsMovedEvenIfItIsReadOnly) {
  SetFileAttributesW(At(L"prj\\A.sldprt").c_str(), FILE_ATTRIBUTE_READONLY);
  Assemble(L"prj\\A.sldprt");
  const ReadOnlyFilesAsOnWindows rule;
  EXPECT_EQ(Cover({At(L"dl\\A.sldprt")}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                                     L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"});
}

TEST_F(BlockedFile, OfAnOlderBackupIsNotReplacedIfItIsReadOnly) {
  SetFileAttributesW(Put(L"dl\\temp\\A.sldprt", L"older").c_str(), FILE_ATTRIBUTE_READONLY);
  Assemble(L"prj\\A.sldprt");
  const ReadOnlyFilesAsOnWindows rule;
  CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), (Texts{NotMoved(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 5),
                                      SwapFailed(hr::kMoveToBackupFailed)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                                     L"dl\\temp\\A.sldprt = older", L"prj\\A.sldprt = old"});
}

/// Fails without an error code.
template <class... Arguments>
BOOL FailWithoutACode(Arguments...) {
  SetLastError(ERROR_SUCCESS);
  return FALSE;
}

DWORD FindNothingWithoutACode(LPCWSTR) {
  SetLastError(ERROR_SUCCESS);
  return INVALID_FILE_ATTRIBUTES;
}

TEST_F(BlockedFile, IsNotMovedIfTheSystemFailsWithoutACode) {
  Assemble(L"prj\\A.sldprt");
  const ImportPatch move(Dll(), "MoveFileExW", FailWithoutACode<LPCWSTR, LPCWSTR, DWORD>);
  CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), (Texts{NotMoved(L"prj\\A.sldprt", L"dl\\temp\\A.sldprt", 0),
                                      SwapFailed(hr::kMoveToBackupFailed)}));
  EXPECT_EQ(Files().back(), L"prj\\A.sldprt = old");
}

TEST_F(BlockedFile, IsNotCopiedIfTheSystemFailsWithoutACode) {
  Assemble(L"prj\\A.sldprt");
  const ImportPatch copy(Dll(), "CopyFileW", FailWithoutACode<LPCWSTR, LPCWSTR, BOOL>);
  CoverExpectingBox(At(L"dl\\B.sldprt"), shown::kReplacementFailed);
  CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  EXPECT_SAME_ENTRIES(m_home.LogLines(), Texts{NotCopied(L"dl\\B.sldprt", L"prj\\B.sldprt", 0),
                                               NotCopiedAfterTheMove(L"dl\\A.sldprt", L"prj\\A.sldprt", 0),
                                               SwapFailed(hr::kCopyFailed)});
  EXPECT_EQ(Files().back(), L"dl\\temp\\A.sldprt = old");
}

TEST_F(BlockedFile, IsNotFoundIfTheSystemFailsWithoutACode) {
  m_folder.MakeFolder(L"dl\\temp");
  Assemble(L"prj\\A.sldprt");
  const ImportPatch attributes(Dll(), "GetFileAttributesW", FindNothingWithoutACode);
  CoverExpectingBox(At(L"dl\\A.sldprt"), shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(),
            (Texts{SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 0", hr::kDownloadMissing),
                   SwapFailed(hr::kDownloadMissing)}));
  EXPECT_EQ(Files().back(), L"prj\\A.sldprt = old");
}

TEST_F(BlockedFile, CannotBeReplacedByACopyIfItIsAFolder) {
  m_folder.MakeFolder(L"prj\\B.sldprt");
  Assemble(L"prj\\A.sldprt");
  CoverExpectingBox(At(L"dl\\B.sldprt"), shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopied(L"dl\\B.sldprt", L"prj\\B.sldprt", 5)});
}

TEST_F(BlockedFile, IsMovedToTheBackupEvenIfItsAttributesCannotBeRead) {
  Assemble(L"prj\\A.sldprt");
  const ImportPatch denied(Dll(), "GetFileAttributesW", DenyAttributesOfA);
  Cover({At(L"dl\\A.sldprt")});
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\temp\\",
                                     L"dl\\temp\\A.sldprt = old", L"prj\\A.sldprt = new"});
}

}  // namespace
