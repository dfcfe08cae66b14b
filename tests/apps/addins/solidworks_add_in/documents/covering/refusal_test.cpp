// Failures before any file is changed.
#include <gtest/gtest.h>

#include <optional>

#include "case_name.h"
#include "covering_fixture.h"
#include "list_difference.h"

namespace {

/// A host call that fails, and the message box and log line that follow.
struct FailingCall {
  const char* name;
  const wchar_t* fault;
  const wchar_t* box;
  int line;
  const wchar_t* text;
  std::optional<HRESULT> code;
};

class Refusal : public CoveringFixture {
 protected:
  Refusal() {
    Put(L"prj\\A.sldprt", L"old");
    m_download = Put(L"dl\\A.sldprt", L"new");
    m_files = Files();
  }

  /// Nothing was changed in the host or on the disk.
  void ExpectUntouched() const {
    EXPECT_SAME_ENTRIES(Files(), m_files);
    EXPECT_EQ(m_host->GetJournal().Calls(L"IAssemblyDoc::ReplaceComponents2").size(), 0u);
    EXPECT_EQ(m_host->GetJournal().Calls(L"IComponent2::SetSuppression2").size(), 0u);
    EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
  }

  std::wstring m_download;
  Texts m_files;
};

class RefusalByTheHost : public Refusal, public testing::WithParamInterface<FailingCall> {};

TEST_P(RefusalByTheHost, IsShownAndThenLogged) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Add(GetParam().fault);
  CoverExpectingBox(m_download, GetParam().box);
  EXPECT_EQ(m_home.LogLines(), Texts{CoverLine(GetParam().line, GetParam().text, GetParam().code)});
  ExpectUntouched();
}

INSTANTIATE_TEST_SUITE_P(
    , RefusalByTheHost,
    testing::Values(
        FailingCall{"ActiveDocument", L"fail get_IActiveDoc2 with 80004005", shown::kReplacementFailed, 966,
                    L"iSwApp->get_IActiveDoc2 failed.", E_FAIL},
        FailingCall{"Type", L"fail GetType with 80004005", shown::kNotSupported, 978,
                    L"moduleType != swDocASSEMBLY", std::nullopt},
        FailingCall{"NoAssembly", L"fail IModelDoc2::QueryInterface(IAssemblyDoc) with 80004002",
                    shown::kReplacementFailed, 987, L"iSwApp->get_IActiveDoc2", S_OK},
        FailingCall{"SelectionManager", L"fail get_ISelectionManager with 8000ffff",
                    shown::kReplacementFailed, 998, L"iSwModel->get_ISelectionManager failed.", E_UNEXPECTED},
        FailingCall{"SelectedObject", L"fail GetSelectedObject6 with 80070005", shown::kReplacementFailed,
                    1009, L"iSwModel->get_ISelectionManager failed.", E_ACCESSDENIED},
        FailingCall{"NoSelectedObject", L"GetSelectedObject6 returns nothing", shown::kReplacementFailed,
                    1009, L"iSwModel->get_ISelectionManager failed.", S_OK},
        FailingCall{"NoSelectedObjectButFalse", L"GetSelectedObject6 returns S_FALSE",
                    shown::kReplacementFailed, 1009, L"iSwModel->get_ISelectionManager failed.", S_FALSE},
        FailingCall{"Component", L"fail IComponent2::QueryInterface(IComponent2) with 80004005",
                    shown::kReplacementFailed, 1021, L"pComponentDisp->QueryInterface failed.", E_FAIL},
        FailingCall{"Path", L"fail GetPathName with 80010108", shown::kReplacementFailed, 1032,
                    L"swSelectedComponent->GetPathName failed.", RPC_E_DISCONNECTED},
        FailingCall{"EmptyPath", L"GetPathName returns nothing", shown::kReplacementFailed, 1032,
                    L"swSelectedComponent->GetPathName failed.", S_OK}),
    CaseName<FailingCall>);

TEST_F(Refusal, IsShownAndLoggedIfAFaceIsSelected) {
  Assemble(L"prj\\A.sldprt");
  m_assembly->selection = {{.component = nullptr, .point = {}}};
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(),
            Texts{CoverLine(1021, L"pComponentDisp->QueryInterface failed.", E_NOINTERFACE)});
  ExpectUntouched();
}

TEST_F(Refusal, IsShownAndLoggedIfNothingIsSelected) {
  Assemble(L"prj\\A.sldprt");
  m_assembly->selection.clear();
  CoverExpectingBox(m_download, shown::kReplacementFailed);
  EXPECT_EQ(m_home.LogLines(), Texts{CoverLine(1009, L"iSwModel->get_ISelectionManager failed.", S_OK)});
  ExpectUntouched();
}

TEST_F(Refusal, OfPartsAndDrawingsComesBeforeTheCheckOfTheSelection) {
  Assemble(L"prj\\A.sldprt");
  for (const wchar_t* name : {L"part.sldprt", L"sheet.slddrw"}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");
    m_host->Open(MakeModel(name));
    CoverExpectingBox(m_download, shown::kNotSupported);
    EXPECT_EQ(m_home.LogLines(), Texts{CoverLine(978, L"moduleType != swDocASSEMBLY")});
    EXPECT_SAME_ENTRIES(HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()"});
    ExpectUntouched();
  }
}

/// A host call that fails with an exception, without a message box and without a log line of the command
/// itself.
struct ThrowingCall {
  const char* name;
  const wchar_t* fault;
  HRESULT code;
};

class RefusalByAnException : public Refusal, public testing::WithParamInterface<ThrowingCall> {};

TEST_P(RefusalByAnException, EndsTheCommandBeforeTheNextPath) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Add(GetParam().fault);
  const auto picked = Cover({m_download, m_download});
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, GetParam().code);
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 1u);
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::get_IActiveDoc2").size(), 1u);
  ExpectUntouched();
}

INSTANTIATE_TEST_SUITE_P(
    , RefusalByAnException,
    testing::Values(ThrowingCall{"NoDocument", L"get_IActiveDoc2 returns no document", E_POINTER},
                    ThrowingCall{"NoDocumentButFalse", L"get_IActiveDoc2 returns S_FALSE", E_POINTER},
                    ThrowingCall{"AssemblyQuery",
                                 L"fail IModelDoc2::QueryInterface(IAssemblyDoc) with 80010108",
                                 RPC_E_DISCONNECTED},
                    ThrowingCall{"NoSelectionManager", L"get_ISelectionManager returns nothing", E_POINTER}),
    CaseName<ThrowingCall>);

TEST_F(Refusal, OfOnePathDoesNotPreventTheNext) {
  Assemble(L"prj\\A.sldprt");
  m_host->GetFaults().Fail(L"ISldWorks::get_IActiveDoc2", 1, E_FAIL);
  m_boxes->Expect(IDOK);
  EXPECT_EQ(Cover({m_download, m_download}).result, S_OK);
  EXPECT_EQ(m_home.LogLines().size(), 1u);
  EXPECT_EQ(m_component->loaded_revision, RevisionOf(L"new"));
}

}  // namespace
