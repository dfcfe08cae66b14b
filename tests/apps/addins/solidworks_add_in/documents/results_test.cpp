// Return values of the document operations, tested on the class itself because no command shows them.
#include <gtest/gtest.h>

#include "class_under_test.h"
#include "documents_fixture.h"
#include "list_difference.h"
#include "log_line.h"
#include "result_codes.h"
#include "views.h"

namespace {

class OperationResult : public DocumentsFixture {
 protected:
  void SetUp() override {
    m_home.WriteConfiguration(L"View.json", ViewWithItems(1));
    const ClassUnderTest made = MakeClassUnderTest();
    m_class = made.object;
    m_addIn = &m_host->Connect(made.held, L"class");
  }

  CSolidWorksAddIn* m_class = nullptr;
};

TEST_F(OperationResult, OfOpeningIsWhetherTheHostReturnedADocument) {
  EXPECT_TRUE(m_class->OpenFilePath(MakeModel(L"a.sldprt")));
  ExpectBox();
  EXPECT_FALSE(m_class->OpenFilePath(m_folder.Path(L"missing.sldprt")));
}

TEST_F(OperationResult, OfTheActiveDocumentsPathIsWhetherThereIsAFile) {
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

TEST_F(OperationResult, OfReplacingIsWhetherTheHostReplacedTheComponent) {
  OpenAssembly();
  EXPECT_TRUE(m_class->ReplaceCurrentFile(MakeModel(L"screw.sldprt")));
  m_host->GetFaults().ReturnFalse(L"IAssemblyDoc::ReplaceComponents2");
  ExpectBox();
  EXPECT_FALSE(m_class->ReplaceCurrentFile(MakeModel(L"rivet.sldprt")));
}

TEST_F(OperationResult, OfCoveringIsFalseIfAMessageWasShown) {
  OpenAssembly();
  m_folder.MakeFolder(L"download");
  const std::wstring download = MakeModel(L"download\\screw.sldprt");
  EXPECT_TRUE(m_class->ReplaceCurrentFileByCovering(download));
  DeleteFileW(download.c_str());
  ExpectBox();
  EXPECT_FALSE(m_class->ReplaceCurrentFileByCovering(m_folder.Path(L"download\\rivet.sldprt")));
}

/// This failure is only logged.
TEST_F(OperationResult, OfCoveringIsTrueIfTheBackupFolderCannotBeCreated) {
  const auto assembly = OpenAssembly();
  m_folder.Write(L"download\\temp", "in place of the folder");
  const std::wstring download = MakeModel(L"download\\screw.sldprt");
  EXPECT_TRUE(m_class->ReplaceCurrentFileByCovering(download));
  EXPECT_EQ(AddInLog(), Texts{ErrorLine(1049, L"ReplaceCurrentFileByCovering",
                                        L"CFileHelper::CreateFolder:" + m_folder.Path(L"download\\temp"),
                                        hr::kBackupFolderNotMade)});
  EXPECT_SAME_ENTRIES(ComponentNames(*assembly), Texts{L"bolt.sldprt", L"nut.sldprt", L"bolt.sldprt"});
}

}  // namespace
