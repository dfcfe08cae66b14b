// Files in far places: behind long paths, under names of any alphabet, on another drive.
#include <gtest/gtest.h>

#include <algorithm>

#include "covering_fixture.h"
#include "environment.h"

namespace {

using Lines = std::vector<std::wstring>;

/// A pair of folders and a name.
struct Place {
  const char* name;
  std::wstring project;
  std::wstring downloads;
  std::wstring file;
};

class FarFile : public CoveringTest, public testing::WithParamInterface<Place> {
 protected:
  FarFile()
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
    const Lines files = Files();
    EXPECT_NE(std::find(files.begin(), files.end(), name + L" = " + label), files.end())
        << testing::PrintToString(files);
  }

  std::wstring m_current, m_same, m_other, m_copy, m_backup;
};

TEST_P(FarFile, IsExchanged) {
  EXPECT_EQ(Cover({At(m_same)}).result, S_OK);
  ExpectContent(L"old", m_backup);
  ExpectContent(L"new", m_current);
  ExpectContent(L"new", m_same);
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
  EXPECT_EQ(m_home.LogLines(), Lines{});
}

TEST_P(FarFile, IsReplacedByACopy) {
  EXPECT_EQ(Cover({At(m_other)}).result, S_OK);
  ExpectContent(L"old", m_current);
  ExpectContent(L"other", m_copy);
  EXPECT_EQ(m_component->record.path, At(m_copy));
  EXPECT_EQ(m_home.LogLines(), Lines{});
}

/// The log has each path as a person knows it.
TEST_P(FarFile, IsNamedInTheLogAsItIsKnown) {
  const std::wstring missing = GetParam().downloads + L"\\missing.sldprt";
  const std::wstring target = GetParam().project + L"\\missing.sldprt";
  CoverTold(At(missing), kFailed);
  EXPECT_EQ(AddInLog(), Lines{CoverLine(1082, L"CopyFile from " + At(missing) + L" to " + At(target) +
                                                  L" failed. Get Last Error: 2<hr=0xa3012005>")});

  AddComponent(m_current);
  CoverTold(At(m_same), kFailed);
  ASSERT_EQ(AddInLog().size(), 3u);
  EXPECT_EQ(AddInLog().at(1), SwapLine(1519, L"MoveFileEx from " + At(m_current) + L" to " + At(m_backup) +
                                                 L" failed. Get Last Error: 32<hr=0xa3012006>"));
  EXPECT_EQ(AddInLog().at(2), CoverLine(1120, L"SwapFile failed. Current model file: " + At(m_current) +
                                                  L", download file: " + At(m_same) + L"<hr=0xa3012006>"));
}

TEST_P(FarFile, HasABackupFolderThatCannotBeMade) {
  const std::wstring backup_folder = GetParam().downloads + L"\\temp";
  m_folder.Write(backup_folder, "in the way");
  EXPECT_EQ(Cover({At(m_same)}).result, S_OK);
  EXPECT_EQ(AddInLog(),
            Lines{CoverLine(1049, L"CFileHelper::CreateFolder:" + At(backup_folder) + L"<hr=0xa3012012>")});
  ExpectContent(L"old", m_current);
}

std::wstring Deep(const std::wstring& top, const std::wstring& name) {
  std::wstring path = top;
  for (int level = 0; level < 4; ++level) path += L"\\" + name;
  return path;
}

const std::wstring kHundred(100, L'x');

INSTANTIATE_TEST_SUITE_P(, FarFile,
                         testing::Values(Place{"LongPaths", Deep(L"prj", kHundred), Deep(L"dl", kHundred),
                                               L"A"},
                                         Place{"LongProject", Deep(L"prj", kHundred), L"dl", L"A"},
                                         Place{"LongDownload", L"prj", Deep(L"dl", kHundred), L"A"},
                                         Place{"Chinese", L"prj\\项目 一", L"dl\\下载", L"零件图纸"},
                                         Place{"BeyondTheBasicPlane", L"prj\\𠮷 😀", L"dl\\😀", L"𠮷é"},
                                         Place{"LongChinese", Deep(L"prj", std::wstring(70, L'项')),
                                               Deep(L"dl", std::wstring(70, L'载')), L"零件"}),
                         [](const auto& test) { return test.param.name; });

/// A download on another drive than the component. Under Wine, drive Z is the root of the Unix system, and
/// /dev/shm a volume of its own.
class OtherDrive : public CoveringTest {
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

TEST_F(OtherDrive, GivesNoPlaceForABackupAndLosesNothing) {
  CoverTold(m_same, kFailed);
  EXPECT_EQ(AddInLog(),
            (Lines{SwapLine(1519, L"MoveFileEx from " + At(L"prj\\A.sldprt") + L" to " +
                                      m_drive.Path(L"temp\\A.sldprt") +
                                      L" failed. Get Last Error: 17<hr=0xa3012006>"),
                   CoverLine(1120, L"SwapFile failed. Current model file: " + At(L"prj\\A.sldprt") +
                                       L", download file: " + m_same + L"<hr=0xa3012006>")}));
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"prj\\A.sldprt = old"}));
  EXPECT_EQ(m_drive.List(), (Lines{L"A.sldprt", L"B.sldprt", L"temp"}));
  EXPECT_EQ(m_drive.List(L"temp"), Lines{});
  EXPECT_EQ(m_drive.Read(L"A.sldprt"), m_folder.Read(L"dl\\A.sldprt"));
  EXPECT_TRUE(m_component->IsSuppressed());
}

TEST_F(OtherDrive, GivesACopyAsAnyOther) {
  EXPECT_EQ(Cover({m_other}).result, S_OK);
  EXPECT_EQ(AddInLog(), Lines{});
  EXPECT_EQ(Files(), (Lines{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"prj\\A.sldprt = old",
                            L"prj\\B.sldprt = other"}));
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"other"));
}

}  // namespace
