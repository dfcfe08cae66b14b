// The backup folder beside the downloads.
#include <gtest/gtest.h>

#include "covering_fixture.h"

namespace {

class BackupFolder : public CoveringTest {
 protected:
  BackupFolder() {
    Put(L"prj\\A.sldprt", L"old");
    Put(L"dl\\A.sldprt", L"new");
    Put(L"dl\\B.sldprt", L"other");
    Put(L"dl\\good\\A.sldprt", L"newer");
    m_folder.Write(L"dl\\temp", "a file in the way");
  }
};

/// One log line and no message; the component is not touched, and the command goes on with the next path.
TEST_F(BackupFolder, ThatCannotBeMadeIsToldInTheLogOnly) {
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({At(L"dl\\A.sldprt"), At(L"dl\\B.sldprt"), At(L"dl\\good\\A.sldprt")}).result, S_OK);
  const std::wstring line =
      CoverLine(1049, L"CFileHelper::CreateFolder:" + At(L"dl\\temp") + L"<hr=0xa3012012>");
  EXPECT_EQ(m_home.LogLines(), (std::vector<std::wstring>{line, line}));
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\good\\",
                                                L"dl\\good\\A.sldprt = newer", L"dl\\good\\temp\\",
                                                L"dl\\good\\temp\\A.sldprt = old", L"dl\\temp = ?",
                                                L"prj\\A.sldprt = newer"}));
  EXPECT_EQ(m_folder.Read(L"dl\\temp"), "a file in the way");
  EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 2u);
}

TEST_F(BackupFolder, IsMadeAlsoWhereNoFileIsMovedThere) {
  Assemble(L"prj\\A.sldprt");
  const std::wstring missing = At(L"new folder\\B.sldprt");
  CoverTold(missing, kFailed);
  EXPECT_TRUE(m_folder.Exists(L"new folder\\temp"));
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(
                                   1082, L"CopyFile from " + missing + L" to " + At(L"prj\\B.sldprt") +
                                             L" failed. Get Last Error: 2<hr=0xa3012005>")});
}

TEST_F(BackupFolder, IsNotMadeForASelectionThatIsNoComponent) {
  Assemble(L"prj\\A.sldprt");
  m_assembly->selection = {{.component = nullptr, .point = {}}};
  CoverTold(At(L"dl\\good\\A.sldprt"), kFailed);
  EXPECT_FALSE(m_folder.Exists(L"dl\\good\\temp"));
}

}  // namespace
