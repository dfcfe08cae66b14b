// A download of another name than the component's file: copied beside it, and the host replaces.
#include <gtest/gtest.h>

#include "covering_fixture.h"

namespace {

class OtherName : public CoveringTest {
 protected:
  OtherName() {
    Put(L"prj\\A.sldprt", L"old");
    m_download = Put(L"dl\\B.sldprt", L"new");
  }

  std::wstring m_download;
};

TEST_F(OtherName, IsCopiedBesideTheComponentAndPutInItsPlace) {
  Assemble(L"prj\\A.sldprt");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(
      HostCalls(),
      (std::vector<std::wstring>{
          L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
          L"IModelDoc2::QueryInterface(IAssemblyDoc)()", L"IModelDoc2::get_ISelectionManager()",
          L"ISelectionMgr::GetSelectedObject6(1, -1)", L"IComponent2::QueryInterface(IComponent2)()",
          L"IComponent2::GetPathName()",
          L"ISldWorks::GetOpenDocumentByName(\"" + At(L"prj\\B.sldprt") + L"\")",
          L"IAssemblyDoc::ReplaceComponents2(\"" + At(L"prj\\B.sldprt") + L"\", \"\", true, 0, true)"}));
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                                L"prj\\B.sldprt = new"}));
  EXPECT_EQ(m_component->record.path, At(L"prj\\B.sldprt"));
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
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
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                                L"prj\\B.sldprt = new"}));
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
}

TEST_F(OtherName, IsNotCopiedOverADocumentThatIsOpen) {
  const std::wstring target = Put(L"prj\\B.sldprt", L"older copy");
  Assemble(L"prj\\A.sldprt");
  m_host->Open(target);
  m_host->Activate(m_assembly);
  CoverTold(m_download, kIsOpening);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                                L"prj\\B.sldprt = older copy"}));
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::GetOpenDocumentByName(\"" + target + L"\")");
  EXPECT_EQ(m_component->record.path, At(L"prj\\A.sldprt"));
}

TEST_F(OtherName, IsCopiedAlsoWhereTheHostCannotSayWhatIsOpen) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"ISldWorks::GetOpenDocumentByName", 1, E_FAIL);
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(m_component->record.path, At(L"prj\\B.sldprt"));
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_F(OtherName, CannotBeCopiedOntoADocumentOfThisVeryAssembly) {
  Put(L"prj\\B.sldprt", L"in use");
  Assemble(L"prj\\A.sldprt");
  AddComponent(L"prj\\B.sldprt");
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(
                                   1082, L"CopyFile from " + m_download + L" to " + At(L"prj\\B.sldprt") +
                                             L" failed. Get Last Error: 32<hr=0xa3012005>")});
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                                L"prj\\B.sldprt = in use"}));
  EXPECT_EQ(m_host->GetJournal().Calls(L"IAssemblyDoc::ReplaceComponents2").size(), 0u);
}

TEST_F(OtherName, IsToldWithTheSystemsErrorWhereTheDownloadIsMissing) {
  Assemble(L"prj\\A.sldprt");
  const std::wstring missing = At(L"dl\\gone.sldprt");
  CoverTold(missing, kFailed);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(
                                   1082, L"CopyFile from " + missing + L" to " + At(L"prj\\gone.sldprt") +
                                             L" failed. Get Last Error: 2<hr=0xa3012005>")});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
}

/// A download that lies beside the component already is its own copy target.
TEST_F(OtherName, IsNotCopiedOntoItself) {
  const std::wstring download = Put(L"prj\\B.sldprt", L"beside");
  Assemble(L"prj\\A.sldprt");
  CoverTold(download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            std::vector<std::wstring>{CoverLine(1082, L"CopyFile from " + download + L" to " + download +
                                                          L" failed. Get Last Error: 32<hr=0xa3012005>")});
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\B.sldprt = new", L"prj\\A.sldprt = old",
                                                L"prj\\B.sldprt = beside", L"prj\\temp\\"}));
}

/// The host refuses: the document of the download, not that of the copy, is closed after message and line.
class RefusedReplacement : public OtherName, public testing::WithParamInterface<HRESULT> {};

TEST_P(RefusedReplacement, ClosesTheDownloadedDocument) {
  Assemble(L"prj\\A.sldprt");
  m_host->Open(m_download);
  m_host->Activate(m_assembly);
  m_host->GetFaults().Fail(L"IAssemblyDoc::ReplaceComponents2", 1, GetParam());
  std::vector<std::wstring> log_before_closing;
  m_host->GetFaults().Before(L"ISldWorks::CloseDoc", 1, [&] { log_before_closing = AddInLog(); });
  CoverTold(m_download, kFailed);
  const std::wstring code = GetParam() == S_FALSE ? L"1" : L"80004005";
  EXPECT_EQ(m_home.LogLines(),
            std::vector<std::wstring>{CoverLine(1094, L"pAssDoc->ReplaceComponents2<hr=0x" + code + L">")});
  EXPECT_EQ(log_before_closing, m_home.LogLines());
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::CloseDoc(\"" + m_download + L"\")");
  EXPECT_EQ(m_host->FindDocument(m_download), nullptr);
  EXPECT_EQ(m_component->record.path, At(L"prj\\A.sldprt"));
  EXPECT_EQ(Files(), (std::vector<std::wstring>{L"dl\\B.sldprt = new", L"dl\\temp\\", L"prj\\A.sldprt = old",
                                                L"prj\\B.sldprt = new"}));
}

INSTANTIATE_TEST_SUITE_P(, RefusedReplacement, testing::Values(S_FALSE, E_FAIL),
                         [](const auto& test) { return test.param == S_FALSE ? "AsFalse" : "WithACode"; });

TEST_F(OtherName, CountsAsReplacedWhereTheHostSaysFalseInItsResultOnly) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().ReturnNothing(L"IAssemblyDoc::ReplaceComponents2");
  EXPECT_EQ(Cover({m_download}).result, S_OK);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
}

}  // namespace
