// Files with long paths, with names in other scripts, and on another drive.
#include <gtest/gtest.h>

#include <algorithm>

#include "case_name.h"
#include "covering_fixture.h"
#include "environment.h"
#include "list_difference.h"
#include "result_codes.h"

namespace {

/// The folders of a component and a download, and a file name.
struct Location {
  const char* name;
  std::wstring project;
  std::wstring downloads;
  std::wstring file;
};

class UnusualPath : public CoveringFixture, public testing::WithParamInterface<Location> {
 protected:
  UnusualPath()
      : m_current(GetParam().project + L"\\" + GetParam().file + L".sldprt"),
        m_same(GetParam().downloads + L"\\" + GetParam().file + L".sldprt"),
        m_other(GetParam().downloads + L"\\" + GetParam().file + L" 2.sldprt"),
        m_copy(GetParam().project + L"\\" + GetParam().file + L" 2.sldprt"),
        m_backup(GetParam().downloads + L"\\temp\\" + GetParam().file + L".sldprt") {
    Put(m_current, L"old");
    Put(m_same, L"new");
    Put(m_other, L"other");
    Assemble(m_current);
  }

  void ExpectContent(const std::wstring& label, const std::wstring& name) const {
    const Texts files = Files();
    EXPECT_NE(std::find(files.begin(), files.end(), name + L" = " + label), files.end())
        << testing::PrintToString(files);
  }

  std::wstring m_current, m_same, m_other, m_copy, m_backup;
};

TEST_P(UnusualPath, IsExchanged) {
  EXPECT_EQ(Cover({At(m_same)}).result, S_OK);
  ExpectContent(L"old", m_backup);
  ExpectContent(L"new", m_current);
  ExpectContent(L"new", m_same);
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_P(UnusualPath, IsReplacedByACopy) {
  EXPECT_EQ(Cover({At(m_other)}).result, S_OK);
  ExpectContent(L"old", m_current);
  ExpectContent(L"other", m_copy);
  EXPECT_EQ(m_component->record.path, At(m_copy));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// Without the prefix for long paths.
TEST_P(UnusualPath, IsLoggedInItsUsualForm) {
  const std::wstring missing = GetParam().downloads + L"\\missing.sldprt";
  const std::wstring target = GetParam().project + L"\\missing.sldprt";
  CoverExpectingBox(At(missing), shown::kReplacementFailed);
  EXPECT_EQ(AddInLog(), Texts{NotCopiedLine(At(missing), At(target), 2)});

  AddComponent(m_current);
  CoverExpectingBox(At(m_same), shown::kReplacementFailed);
  ASSERT_EQ(AddInLog().size(), 3u);
  EXPECT_EQ(AddInLog().at(1), NotMovedLine(At(m_current), At(m_backup), 32));
  EXPECT_EQ(AddInLog().at(2), SwapFailedLine(At(m_current), At(m_same), hr::kMoveToBackupFailed));
}

TEST_P(UnusualPath, OfABackupFolderThatCannotBeCreatedIsLogged) {
  const std::wstring backup_folder = GetParam().downloads + L"\\temp";
  m_folder.Write(backup_folder, "in the way");
  EXPECT_EQ(Cover({At(m_same)}).result, S_OK);
  EXPECT_EQ(AddInLog(), Texts{NoBackupFolderLine(At(backup_folder))});
  ExpectContent(L"old", m_current);
}

std::wstring Deep(const std::wstring& top, const std::wstring& name) {
  std::wstring path = top;
  for (int level = 0; level < 4; ++level) path += L"\\" + name;
  return path;
}

const std::wstring kHundred(100, L'x');

INSTANTIATE_TEST_SUITE_P(, UnusualPath,
                         testing::Values(Location{"LongPaths", Deep(L"prj", kHundred), Deep(L"dl", kHundred),
                                                  L"A"},
                                         Location{"LongProject", Deep(L"prj", kHundred), L"dl", L"A"},
                                         Location{"LongDownload", L"prj", Deep(L"dl", kHundred), L"A"},
                                         Location{"Chinese", L"prj\\项目 一", L"dl\\下载", L"零件图纸"},
                                         Location{"BeyondTheBasicPlane", L"prj\\𠮷 😀", L"dl\\😀", L"𠮷é"},
                                         Location{"LongChinese", Deep(L"prj", std::wstring(70, L'项')),
                                                  Deep(L"dl", std::wstring(70, L'载')), L"零件"}),
                         CaseName<Location>);

/// The download and the component are on different drives. Under Wine, drive Z is the root of the Unix
/// system, and /dev/shm is a volume of its own.
class OtherDrive : public CoveringFixture {
 protected:
  OtherDrive() : m_temp(L"TMP", L"Z:\\dev\\shm") {
    Put(L"prj\\A.sldprt", L"old");
    m_same = CopyThere(Put(L"dl\\A.sldprt", L"new"), L"A.sldprt");
    m_other = CopyThere(Put(L"dl\\B.sldprt", L"other"), L"B.sldprt");
    Assemble(L"prj\\A.sldprt");
  }

  std::wstring CopyThere(const std::wstring& path, const std::wstring& name) const {
    return m_drive.Write(name, ReadFileBytes(path));
  }

  ScopedEnvironment m_temp;
  TempFolder m_drive;
  std::wstring m_same;
  std::wstring m_other;
};

TEST_F(OtherDrive, CannotHoldABackupAndNoFileIsLost) {
  CoverExpectingBox(m_same, shown::kReplacementFailed);
  EXPECT_EQ(AddInLog(), (Texts{NotMovedLine(At(L"prj\\A.sldprt"), m_drive.Path(L"temp\\A.sldprt"), 17),
                               SwapFailedLine(At(L"prj\\A.sldprt"), m_same, hr::kMoveToBackupFailed)}));
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"prj\\A.sldprt = old"});
  EXPECT_SAME_ENTRIES(m_drive.List(), Texts{L"A.sldprt", L"B.sldprt", L"temp"});
  EXPECT_EQ(m_drive.List(L"temp"), Texts{});
  EXPECT_EQ(m_drive.Read(L"A.sldprt"), m_folder.Read(L"dl\\A.sldprt"));
  EXPECT_TRUE(m_component->IsSuppressed());
}

TEST_F(OtherDrive, CanHoldADownloadThatIsCopied) {
  EXPECT_EQ(Cover({m_other}).result, S_OK);
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"prj\\A.sldprt = old",
                                     L"prj\\B.sldprt = other"});
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"other"));
}

}  // namespace
