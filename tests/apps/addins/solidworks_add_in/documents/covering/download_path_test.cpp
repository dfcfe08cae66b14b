// Download paths without a folder: what the add-in appends begins with a backslash, so the backup folder lies
// in the root of the current drive. Nothing there is found, and no file of the component changes.
#include <gtest/gtest.h>

#include "case_name.h"
#include "covering_fixture.h"
#include "list_difference.h"

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

/// A download path without a folder, and the paths of the copy that fails.
struct DownloadPath {
  const char* name;
  const wchar_t* path;
  const wchar_t* source;
  const wchar_t* target;
  int error;
};

class DownloadPathWithoutAFolder : public CoveringFixture, public testing::WithParamInterface<DownloadPath> {
 protected:
  DownloadPathWithoutAFolder() { Put(L"prj\\A.sldprt", L"old"); }
  ~DownloadPathWithoutAFolder() override {
    if (!m_hadFolder) RemoveDirectoryW(kBackupFolder);
  }

  static constexpr const wchar_t* kBackupFolder = L"C:\\temp";
  const CurrentDrive m_drive;
  const bool m_hadFolder = GetFileAttributesW(kBackupFolder) != INVALID_FILE_ATTRIBUTES;
};

TEST_P(DownloadPathWithoutAFolder, IsShownAndLoggedAsAFailedCopy) {
  Assemble(L"prj\\A.sldprt");

  CoverExpectingBox(GetParam().path, shown::kReplacementFailed);

  EXPECT_EQ(m_home.LogLines(),
            Texts{NotCopiedLine(GetParam().source, At(GetParam().target), GetParam().error)});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"prj\\A.sldprt = old"});
  EXPECT_EQ(m_component->record.path, At(L"prj\\A.sldprt"));
  EXPECT_NE(GetFileAttributesW(kBackupFolder), INVALID_FILE_ATTRIBUTES);
}

INSTANTIATE_TEST_SUITE_P(, DownloadPathWithoutAFolder,
                         testing::Values(DownloadPath{"Empty", L"", L"\\", L"prj\\", 3},
                                         DownloadPath{"OnlyAName", L"tavo-no-such-file.sldprt",
                                                      L"\\tavo-no-such-file.sldprt",
                                                      L"prj\\tavo-no-such-file.sldprt", 2},
                                         DownloadPath{"OnlyAFolder", L"\\", L"\\", L"prj\\", 3}),
                         CaseName<DownloadPath>);

}  // namespace
