// Return values of the document operations, tested on the class itself because no command shows them.
#include <gtest/gtest.h>

#include "case_name.h"
#include "class_under_test.h"
#include "documents_fixture.h"
#include "list_difference.h"
#include "log_line.h"
#include "result_codes.h"

namespace {

class OperationResult : public ConnectedClass<DocumentsFixture> {};

TEST_F(OperationResult, OfOpeningIsWhetherTheHostReturnedADocument) {
  EXPECT_TRUE(m_class->OpenFilePath(MakeModel(L"a.sldprt")));
  ExpectBox();
  EXPECT_FALSE(m_class->OpenFilePath(m_folder.Path(L"missing.sldprt")));
  m_host->GetFaults().FailWithResults(L"ISldWorks::OpenDoc6", 1, E_FAIL);
  ExpectBox();
  EXPECT_FALSE(m_class->OpenFilePath(MakeModel(L"b.sldprt"))) << "the host's code counts, not its document";
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

/// A fault of the host that ends an operation with a message box.
struct Refusal {
  const char* name;
  const wchar_t* fault;
};

class RefusedReplacement : public OperationResult, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedReplacement, HasTheResultFalse) {
  OpenAssembly();
  m_host->GetFaults().Add(GetParam().fault);
  ExpectBox();
  EXPECT_FALSE(m_class->ReplaceCurrentFile(MakeModel(L"screw.sldprt")));
}

INSTANTIATE_TEST_SUITE_P(
    , RefusedReplacement,
    testing::Values(Refusal{"ActiveDocument", L"fail get_IActiveDoc2 with 80004005"},
                    Refusal{"WrongType", L"GetType returns nothing"},
                    Refusal{"NoAssembly", L"fail IModelDoc2::QueryInterface(IAssemblyDoc) with 80004002"},
                    Refusal{"Replacement", L"fail ReplaceComponents2 with 80004005"}),
    CaseName<Refusal>);

/// Two downloads: one has the name of the selected component's file, the other an own name.
class CoveringResult : public OperationResult {
 protected:
  void SetUp() override {
    OperationResult::SetUp();
    m_folder.MakeFolder(L"download");
    m_same = MakeModel(L"download\\nut.sldprt");
    m_other = MakeModel(L"download\\screw.sldprt");
    const auto assembly = OpenAssembly();
    assembly->selection = {{assembly->FindComponent(L"nut-1"), kPicked}};
  }

  void ExpectFalse(const std::wstring& download) {
    ExpectBox();
    EXPECT_FALSE(m_class->ReplaceCurrentFileByCovering(download));
  }

  std::wstring m_same;
  std::wstring m_other;
};

TEST_F(CoveringResult, IsTrueAfterAnExchange) { EXPECT_TRUE(m_class->ReplaceCurrentFileByCovering(m_same)); }

TEST_F(CoveringResult, IsTrueAfterACopy) { EXPECT_TRUE(m_class->ReplaceCurrentFileByCovering(m_other)); }

TEST_F(CoveringResult, IsFalseIfTheDownloadIsMissing) {
  DeleteFileW(m_same.c_str());
  DeleteFileW(m_other.c_str());
  ExpectFalse(m_same);
  ExpectFalse(m_other);
}

TEST_F(CoveringResult, IsFalseIfTheFileIsOpening) {
  const auto assembly = m_host->ActiveDocument();
  m_host->Open(MakeModel(L"parts\\screw.sldprt"));
  m_host->Activate(assembly);
  ExpectFalse(m_other);
  EXPECT_EQ(BoxTexts(), Texts{shown::kFileIsOpening});
}

TEST_F(CoveringResult, IsFalseIfTheHostRefusesTheCopy) {
  m_host->GetFaults().ReturnFalse(L"IAssemblyDoc::ReplaceComponents2");
  ExpectFalse(m_other);
}

class RefusedCovering : public CoveringResult, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedCovering, HasTheResultFalse) {
  m_host->GetFaults().Add(GetParam().fault);
  ExpectFalse(m_same);
}

INSTANTIATE_TEST_SUITE_P(
    , RefusedCovering,
    testing::Values(Refusal{"ActiveDocument", L"fail get_IActiveDoc2 with 80004005"},
                    Refusal{"WrongType", L"GetType returns nothing"},
                    Refusal{"NoAssembly", L"fail IModelDoc2::QueryInterface(IAssemblyDoc) with 80004002"},
                    Refusal{"SelectionManager", L"fail get_ISelectionManager with 80004005"},
                    Refusal{"NothingSelected", L"GetSelectedObject6 returns nothing"},
                    Refusal{"NoComponent", L"fail IComponent2::QueryInterface(IComponent2) with 80004002"},
                    Refusal{"ComponentPath", L"fail GetPathName with 80004005"},
                    Refusal{"EmptyComponentPath", L"GetPathName returns nothing"},
                    Refusal{"Suppress", L"fail SetSuppression2 with 80004005"},
                    Refusal{"Resolve", L"fail the 2nd SetSuppression2 with 80004005"}),
    CaseName<Refusal>);

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
