// What keeps a component from being covered before anything on the disk is touched.
#include <gtest/gtest.h>

#include "covering_fixture.h"

namespace {

/// A host call that goes wrong, and the log line that says so.
struct FailingCall {
  const char* name;
  const wchar_t* fault;
  const wchar_t* box;
  int line;
  const wchar_t* text;
};

class Refusal : public CoveringTest {
 protected:
  Refusal() {
    Put(L"prj\\A.sldprt", L"old");
    m_download = Put(L"dl\\A.sldprt", L"new");
    m_files = Files();
  }

  /// Nothing is to have happened in the host or on the disk.
  void ExpectUntouched() const {
    EXPECT_EQ(Files(), m_files);
    EXPECT_EQ(m_host->GetJournal().Calls(L"IAssemblyDoc::ReplaceComponents2").size(), 0u);
    EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 0u);
    EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
  }

  std::wstring m_download;
  std::vector<std::wstring> m_files;
};

class RefusalByTheHost : public Refusal, public testing::WithParamInterface<FailingCall> {};

TEST_P(RefusalByTheHost, ShowsTheMessageAndThenWritesTheLogLine) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Add(GetParam().fault);
  CoverTold(m_download, GetParam().box);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(GetParam().line, GetParam().text)});
  ExpectUntouched();
}

constexpr const wchar_t* kMessage10 = L"Model replacement failed.";
constexpr const wchar_t* kMessage11 = L"The Current Model does not Support Replacement";

INSTANTIATE_TEST_SUITE_P(
    , RefusalByTheHost,
    testing::Values(FailingCall{"ActiveDocument", L"fail get_IActiveDoc2 with 80004005", kMessage10, 966,
                                L"iSwApp->get_IActiveDoc2 failed.<hr=0x80004005>"},
                    FailingCall{"Type", L"fail GetType with 80004005", kMessage11, 978,
                                L"moduleType != swDocASSEMBLY"},
                    FailingCall{"NoAssembly", L"fail IModelDoc2::QueryInterface(IAssemblyDoc) with 80004002",
                                kMessage10, 987, L"iSwApp->get_IActiveDoc2<hr=0x0>"},
                    FailingCall{"SelectionManager", L"fail get_ISelectionManager with 8000ffff", kMessage10,
                                998, L"iSwModel->get_ISelectionManager failed.<hr=0x8000ffff>"},
                    FailingCall{"SelectedObject", L"fail GetSelectedObject6 with 80070005", kMessage10, 1009,
                                L"iSwModel->get_ISelectionManager failed.<hr=0x80070005>"},
                    FailingCall{"NoSelectedObject", L"GetSelectedObject6 returns nothing", kMessage10, 1009,
                                L"iSwModel->get_ISelectionManager failed.<hr=0x0>"},
                    FailingCall{"NoSelectedObjectButFalse", L"GetSelectedObject6 returns S_FALSE", kMessage10,
                                1009, L"iSwModel->get_ISelectionManager failed.<hr=0x1>"},
                    FailingCall{"Component", L"fail IComponent2::QueryInterface(IComponent2) with 80004005",
                                kMessage10, 1021, L"pComponentDisp->QueryInterface failed.<hr=0x80004005>"},
                    FailingCall{"Path", L"fail GetPathName with 80010108", kMessage10, 1032,
                                L"swSelectedComponent->GetPathName failed.<hr=0x80010108>"},
                    FailingCall{"EmptyPath", L"GetPathName returns nothing", kMessage10, 1032,
                                L"swSelectedComponent->GetPathName failed.<hr=0x0>"}),
    [](const auto& test) { return test.param.name; });

TEST_F(Refusal, OfAFaceInsteadOfAComponent) {
  Assemble(L"prj\\A.sldprt");
  m_assembly->selection = {{.component = nullptr, .point = {}}};
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(
                                   1021, L"pComponentDisp->QueryInterface failed.<hr=0x80004002>")});
  ExpectUntouched();
}

TEST_F(Refusal, WithoutASelection) {
  Assemble(L"prj\\A.sldprt");
  m_assembly->selection.clear();
  CoverTold(m_download, kFailed);
  EXPECT_EQ(m_home.LogLines(),
            std::vector<std::wstring>{CoverLine(1009, L"iSwModel->get_ISelectionManager failed.<hr=0x0>")});
  ExpectUntouched();
}

TEST_F(Refusal, OfPartsAndDrawingsBeforeAnySelectionIsLookedAt) {
  Assemble(L"prj\\A.sldprt");
  for (const wchar_t* name : {L"part.sldprt", L"sheet.slddrw"}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");
    m_host->Open(MakeModel(name));
    CoverTold(m_download, kNotSupported);
    EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{CoverLine(978, L"moduleType != swDocASSEMBLY")});
    EXPECT_EQ(HostCalls(),
              (std::vector<std::wstring>{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()"}));
    ExpectUntouched();
  }
}

/// What is raised to the host, without a message box and without a line of the command itself.
struct RaisingCall {
  const char* name;
  const wchar_t* fault;
  HRESULT code;
};

class RefusalByAnException : public Refusal, public testing::WithParamInterface<RaisingCall> {};

TEST_P(RefusalByAnException, EndsTheCommandAlsoForTheNextPath) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Add(GetParam().fault);
  const auto picked = Cover({m_download, m_download});
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, GetParam().code);
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{});
  EXPECT_EQ(PlatformLog().size(), 1u);
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::get_IActiveDoc2").size(), 1u);
  ExpectUntouched();
}

INSTANTIATE_TEST_SUITE_P(
    , RefusalByAnException,
    testing::Values(RaisingCall{"NoDocument", L"get_IActiveDoc2 returns no document", E_POINTER},
                    RaisingCall{"NoDocumentButFalse", L"get_IActiveDoc2 returns S_FALSE", E_POINTER},
                    RaisingCall{"AssemblyQuery",
                                L"fail IModelDoc2::QueryInterface(IAssemblyDoc) with 80010108",
                                RPC_E_DISCONNECTED},
                    RaisingCall{"NoSelectionManager", L"get_ISelectionManager returns nothing", E_POINTER}),
    [](const auto& test) { return test.param.name; });

TEST_F(Refusal, OfOnePathDoesNotStopTheNext) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"ISldWorks::get_IActiveDoc2", 1, E_FAIL);
  m_boxes->Expect(IDOK);
  EXPECT_EQ(Cover({m_download, m_download}).result, S_OK);
  EXPECT_EQ(m_home.LogLines().size(), 1u);
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
}

}  // namespace
