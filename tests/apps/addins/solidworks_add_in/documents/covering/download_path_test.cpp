// Download paths without a folder: what the add-in appends begins with a backslash, so the backup folder lies
// in the root of the current drive. Nothing there is found, and no file of the component changes.
#include <gtest/gtest.h>

#include "case_name.h"
#include "covering_fixture.h"
#include "result_codes.h"

namespace {

/// For the life of the object, drive C is the current one. Wine's current drive is the root of the Unix
/// system otherwise.
class CurrentDrive {
 public:
  CurrentDrive() {
    GetCurrentDirectoryW(MAX_PATH, m_before);
    SetCurrentDirectoryW(L"C:\\");
  }
  CurrentDrive(const CurrentDrive&) = delete;
  CurrentDrive& operator=(const CurrentDrive&) = delete;
  ~CurrentDrive() { SetCurrentDirectoryW(m_before); }

 private:
  wchar_t m_before[MAX_PATH] = {};
};

class DownloadPathWithoutAFolder : public CoveringFixture {
 protected:
  DownloadPathWithoutAFolder() {
    Put(m_componentFile, L"old");
    Assemble(m_componentFile);
  }
  ~DownloadPathWithoutAFolder() override {
    DeleteFileW(m_backup.c_str());
    if (!m_hadFolder) RemoveDirectoryW(kBackupFolder);
  }
  static bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  static constexpr const wchar_t* kBackupFolder = L"C:\\temp";
  const CurrentDrive m_drive;
  const bool m_hadFolder = Exists(kBackupFolder);
  const std::wstring m_name = L"tavo component " + std::to_wstring(GetCurrentProcessId()) + L".sldprt";
  const std::wstring m_backup = kBackupFolder + (L"\\" + m_name);
  const std::wstring m_componentFile = L"prj\\" + m_name;
};

/// A download path, and the failed copy from the current drive.
struct DownloadPath {
  const char* name;
  const wchar_t* path;
  const wchar_t* source;
  const wchar_t* target;
  int error;
};

class OtherDownloadWithoutAFolder : public DownloadPathWithoutAFolder,
                                    public testing::WithParamInterface<DownloadPath> {};

TEST_P(OtherDownloadWithoutAFolder, IsShownAndLoggedAsAFailedCopy) {
  CoverExpectingBox(GetParam().path, shown::kReplacementFailed);

  EXPECT_EQ(m_home.LogLines(),
            Texts{NotCopiedLine(GetParam().source, At(GetParam().target), GetParam().error)});
  EXPECT_EQ(Files(), Texts{m_componentFile + L" = old"});
  EXPECT_EQ(m_component->record.path, At(m_componentFile));
  EXPECT_TRUE(Exists(kBackupFolder));
}

// The copy of a folder is refused.
INSTANTIATE_TEST_SUITE_P(
    , OtherDownloadWithoutAFolder,
    testing::Values(DownloadPath{"Empty", L"", L"\\", L"prj\\", ERROR_ACCESS_DENIED},
                    DownloadPath{"OnlyASeparator", L"\\", L"\\", L"prj\\", ERROR_ACCESS_DENIED},
                    DownloadPath{"OnlyAName", L"tavo no such file.sldprt", L"\\tavo no such file.sldprt",
                                 L"prj\\tavo no such file.sldprt", ERROR_FILE_NOT_FOUND}),
    CaseName<DownloadPath>);

/// As for every missing download of the component's name.
TEST_F(DownloadPathWithoutAFolder, LeavesTheOldFileOnlyInTheBackupIfItIsTheComponentsName) {
  CoverExpectingBox(m_name, shown::kReplacementFailed);

  EXPECT_EQ(m_home.LogLines(),
            (Texts{SwapLine(1526, L"GetFileAttributes failed. Get Last Error: 2", hr::kDownloadMissing),
                   SwapFailedLine(At(m_componentFile), m_name, hr::kDownloadMissing)}));
  EXPECT_EQ(Files(), Texts{});
  EXPECT_TRUE(Exists(m_backup));
  EXPECT_TRUE(m_component->IsSuppressed());
}

}  // namespace
