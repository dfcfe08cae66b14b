// The backup folder beside the download.
#include <gtest/gtest.h>

#include "covering_fixture.h"
#include "list_difference.h"

namespace {

class BackupFolder : public CoveringFixture {
 protected:
  BackupFolder() {
    Put(L"prj\\A.sldprt", L"old");
    Put(L"dl\\A.sldprt", L"new");
    Put(L"dl\\B.sldprt", L"other");
    Put(L"dl\\good\\A.sldprt", L"newer");
    m_folder.Write(L"dl\\temp", "a file in the way");
  }
};

/// The command does not change the component and continues with the next path.
TEST_F(BackupFolder, ThatCannotBeCreatedIsLoggedWithoutAMessage) {
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({At(L"dl\\A.sldprt"), At(L"dl\\B.sldprt"), At(L"dl\\good\\A.sldprt")}).result, S_OK);
  const std::wstring line = NoBackupFolderLine(At(L"dl\\temp"));
  EXPECT_EQ(m_home.LogLines(), (Texts{line, line}));
  EXPECT_SAME_ENTRIES(
      Files(), Texts{L"dl\\A.sldprt = new", L"dl\\B.sldprt = other", L"dl\\good\\",
                     L"dl\\good\\A.sldprt = newer", L"dl\\good\\temp\\", L"dl\\good\\temp\\A.sldprt = old",
                     L"dl\\temp = ?", L"prj\\A.sldprt = newer"});
  EXPECT_EQ(m_folder.Read(L"dl\\temp"), "a file in the way");
  EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 2u);
}

TEST_F(BackupFolder, IsCreatedEvenIfNoFileIsMovedThere) {
  Assemble(L"prj\\A.sldprt");
  const std::wstring missing = At(L"new folder\\B.sldprt");
  CoverExpectingBox(missing, shown::kReplacementFailed);
  EXPECT_TRUE(m_folder.Exists(L"new folder\\temp"));
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopiedLine(missing, At(L"prj\\B.sldprt"), 2)});
}

TEST_F(BackupFolder, IsNotCreatedIfTheSelectionIsNotAComponent) {
  Assemble(L"prj\\A.sldprt");
  m_assembly->selection = {{.component = nullptr, .point = {}}};
  CoverExpectingBox(At(L"dl\\good\\A.sldprt"), shown::kReplacementFailed);
  EXPECT_FALSE(m_folder.Exists(L"dl\\good\\temp"));
}

}  // namespace
