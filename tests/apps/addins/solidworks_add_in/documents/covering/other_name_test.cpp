// A download whose name differs from the component's file: it is copied beside that file, and the host
// replaces the component.
#include <gtest/gtest.h>

#include "covering_fixture.h"
#include "list_difference.h"

namespace {

class OtherName : public CoveringFixture {
 protected:
  OtherName() {
    Put(L"prj\\A.sldprt", L"old");
    m_download = Put(L"dl\\B.sldprt", L"new");
  }

  std::wstring m_download;
};

TEST_F(OtherName, IsCopiedBesideTheComponentAndReplacesIt) {
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_SAME_ENTRIES(
      HostCalls(),
      Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
            L"IModelDoc2::QueryInterface(IAssemblyDoc)()", L"IModelDoc2::get_ISelectionManager()",
            L"ISelectionMgr::GetSelectedObject6(1, -1)", L"IComponent2::QueryInterface(IComponent2)()",
            L"IComponent2::GetPathName()",
            L"ISldWorks::GetOpenDocumentByName(\"" + At(L"prj\\B.sldprt") + L"\")",
            L"IAssemblyDoc::ReplaceComponents2(\"" + At(L"prj\\B.sldprt") + L"\", \"\", true, 0, true)"});
  EXPECT_SAME_ENTRIES(
      Files(), Texts{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old", L"prj\\B.sldprt = new"});
  EXPECT_EQ(m_component->record.path, At(L"prj\\B.sldprt"));
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(OtherName, ReplacesEveryInstanceAndKeepsTheMates) {
  Assemble(L"prj\\A.sldprt");
  const auto second = AddComponent(L"prj\\A.sldprt");
  Put(L"prj\\C.sldprt", L"other");
  const auto other = AddComponent(L"prj\\C.sldprt");
  m_assembly->model.mates = {{.name = L"flush", .first = second->record.name, .second = other->record.name}};
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(second->record.path, At(L"prj\\B.sldprt"));
  EXPECT_EQ(other->record.path, At(L"prj\\C.sldprt"));
  ASSERT_EQ(m_assembly->model.mates.size(), 1u);
  EXPECT_EQ(m_assembly->model.mates[0].first, second->record.name);
}

TEST_F(OtherName, OverwritesAnOlderCopy) {
  Put(L"prj\\B.sldprt", L"older copy");
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_SAME_ENTRIES(
      Files(), Texts{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old", L"prj\\B.sldprt = new"});
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
}

TEST_F(OtherName, IsNotCopiedOverAnOpenDocument) {
  const std::wstring target = Put(L"prj\\B.sldprt", L"older copy");
  Assemble(L"prj\\A.sldprt");
  m_host->Open(target);
  m_host->Activate(m_assembly);
  CoverExpectingBox(m_download, shown::kFileIsOpening);
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                     L"prj\\B.sldprt = older copy"});
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::GetOpenDocumentByName(\"" + target + L"\")");
  EXPECT_EQ(m_component->record.path, At(L"prj\\A.sldprt"));
}

TEST_F(OtherName, IsCopiedIfTheHostFailsToReportOpenDocuments) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"ISldWorks::GetOpenDocumentByName", 1, E_FAIL);
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(m_component->record.path, At(L"prj\\B.sldprt"));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(OtherName, CannotBeCopiedOverAnotherComponentOfTheAssembly) {
  Put(L"prj\\B.sldprt", L"in use");
  Assemble(L"prj\\A.sldprt");
  AddComponent(L"prj\\B.sldprt");
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopiedLine(m_download, At(L"prj\\B.sldprt"), 32)});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                     L"prj\\B.sldprt = in use"});
  EXPECT_EQ(m_host->GetJournal().Calls(L"IAssemblyDoc::ReplaceComponents2").size(), 0u);
}

TEST_F(OtherName, IsLoggedWithTheSystemsErrorIfItIsMissing) {
  Assemble(L"prj\\A.sldprt");
  const std::wstring missing = At(L"dl\\gone.sldprt");
  CoverExpectingBox(missing, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopiedLine(missing, At(L"prj\\gone.sldprt"), 2)});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
}

/// The download is already beside the component's file.
TEST_F(OtherName, CannotBeCopiedOverItself) {
  const std::wstring download = Put(L"prj\\B.sldprt", L"beside");
  Assemble(L"prj\\A.sldprt");
  CoverExpectingBox(download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{NotCopiedLine(download, download, 32)});
  EXPECT_SAME_ENTRIES(Files(), Texts{L"dl\\B.sldprt = new", L"prj\\A.sldprt = old", L"prj\\B.sldprt = beside",
                                     L"prj\\temp\\"});
}

/// The host replaces nothing: after the message and the log line, the document of the download is closed, not
/// the document of the copy.
class RefusedReplacement : public OtherName, public testing::WithParamInterface<HRESULT> {};

TEST_P(RefusedReplacement, ClosesTheDownloadedDocument) {
  Assemble(L"prj\\A.sldprt");
  m_host->Open(m_download);
  m_host->Activate(m_assembly);
  m_host->GetFaults().Fail(L"IAssemblyDoc::ReplaceComponents2", 1, GetParam());
  Texts log_before_closing;
  m_host->GetFaults().Before(L"ISldWorks::CloseDoc", 1, [&] { log_before_closing = AddInLog(); });
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{CoverLine(1094, L"pAssDoc->ReplaceComponents2", GetParam())});
  EXPECT_EQ(log_before_closing, m_home.LogLines());
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::CloseDoc(\"" + m_download + L"\")");
  EXPECT_EQ(m_host->FindDocument(m_download), nullptr);
  EXPECT_EQ(m_component->record.path, At(L"prj\\A.sldprt"));
  EXPECT_SAME_ENTRIES(
      Files(), Texts{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old", L"prj\\B.sldprt = new"});
}

INSTANTIATE_TEST_SUITE_P(, RefusedReplacement, testing::Values(S_FALSE, E_FAIL),
                         [](const auto& test) { return test.param == S_FALSE ? "False" : "Failure"; });

TEST_F(OtherName, CountsAsReplacedIfOnlyTheReturnedValueIsFalse) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().ReturnNothing(L"IAssemblyDoc::ReplaceComponents2");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
}

}  // namespace
