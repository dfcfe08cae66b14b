// What the document operations give back, by the class itself: no command shows it.
#include <gtest/gtest.h>

#include "class_under_test.h"
#include "documents_fixture.h"
#include "views.h"

namespace {

class OperationResult : public DocumentsTest {
 protected:
  void SetUp() override {
    m_home.WriteConfiguration(L"View.json", ViewWithItems(1));
    const ClassUnderTest made = MakeClassUnderTest();
    m_class = made.object;
    m_addIn = &m_host->Connect(made.held, L"class");
  }

  CSolidWorksAddIn* m_class = nullptr;
};

TEST_F(OperationResult, OfOpeningTellsWhetherTheHostGaveADocument) {
  EXPECT_TRUE(m_class->OpenFilePath(MakeModel(L"a.sldprt")));
  ExpectBox();
  EXPECT_FALSE(m_class->OpenFilePath(m_folder.Path(L"missing.sldprt")));
}

TEST_F(OperationResult, OfThePathOfTheActiveDocumentTellsWhetherThereIsOne) {
  std::wstring path = L"untouched";
  EXPECT_FALSE(m_class->GetCurrentFilePath(path));
  m_host->New(swDocPART);
  EXPECT_FALSE(m_class->GetCurrentFilePath(path));
  EXPECT_EQ(path, L"untouched");
  const std::wstring part = MakeModel(L"a.sldprt");
  m_host->Open(part);
  EXPECT_TRUE(m_class->GetCurrentFilePath(path));
  EXPECT_EQ(path, part);
}

TEST_F(OperationResult, OfReplacingTellsWhetherTheHostReplaced) {
  OpenAssembly();
  EXPECT_TRUE(m_class->ReplaceCurrentFile(MakeModel(L"screw.sldprt")));
  m_host->GetFaults().ReturnFalse(L"IAssemblyDoc::ReplaceComponents2");
  ExpectBox();
  EXPECT_FALSE(m_class->ReplaceCurrentFile(MakeModel(L"rivet.sldprt")));
}

TEST_F(OperationResult, OfCoveringTellsOfFailuresThatTheUserSaw) {
  OpenAssembly();
  m_folder.MakeFolder(L"download");
  const std::wstring download = MakeModel(L"download\\screw.sldprt");
  EXPECT_TRUE(m_class->ReplaceCurrentFileByCovering(download));
  DeleteFileW(download.c_str());
  ExpectBox();
  EXPECT_FALSE(m_class->ReplaceCurrentFileByCovering(m_folder.Path(L"download\\rivet.sldprt")));
}

/// A backup folder that cannot be made is told to nobody but the log.
TEST_F(OperationResult, OfCoveringIsNoFailureWhereTheBackupFolderCannotBeMade) {
  const auto assembly = OpenAssembly();
  m_folder.Write(L"download\\temp", "in the folder's place");
  const std::wstring download = MakeModel(L"download\\screw.sldprt");
  EXPECT_TRUE(m_class->ReplaceCurrentFileByCovering(download));
  EXPECT_EQ(AddInLog(), Texts{FailureLine(1049, L"ReplaceCurrentFileByCovering",
                                          L"CFileHelper::CreateFolder:" + m_folder.Path(L"download\\temp") +
                                              L"<hr=0xa3012012>")});
  EXPECT_EQ(ComponentNames(*assembly), (Texts{L"bolt.sldprt", L"nut.sldprt", L"bolt.sldprt"}));
}

}  // namespace
