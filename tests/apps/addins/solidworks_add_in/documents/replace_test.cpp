// Replacing the selected component with files that the PLM client names.
#include <gtest/gtest.h>

#include <optional>

#include "case_name.h"
#include "documents_fixture.h"
#include "list_difference.h"
#include "log_line.h"
#include "module/user_language.h"

namespace {

constexpr const wchar_t* kReplace = L"IAssemblyDoc::ReplaceComponents2";

std::wstring ReplaceLine(int line, const std::wstring& text, std::optional<HRESULT> code = {}) {
  return ErrorLine(line, L"ReplaceCurrentFile", text, code);
}

class Replace : public DocumentsFixture {
 protected:
  void ReplaceWith(const std::wstring& path) { PickFilesWithSuccess({{"ReplaceFile", {path}}}); }

  /// There was one message box, and one log line after it.
  void ExpectShownAndLogged(const std::wstring& box, const std::wstring& line) const {
    EXPECT_EQ(BoxTexts(), Texts{box});
    EXPECT_EQ(LinesAtBoxes(), std::vector<std::size_t>{0}) << "shown before it is logged";
    EXPECT_EQ(m_home.LogLines(), Texts{line});
  }

  /// Replacing ends with an exception of `code`, which is logged once for each call; no message box is shown
  /// and the add-in itself logs nothing.
  void ExpectEndedWith(HRESULT code, const std::wstring& path) {
    const auto picked = PickFiles({{"ReplaceFile", {path}}});
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
    EXPECT_EQ(picked.code, code);
    EXPECT_NE(PlatformError(), L"");
    ExpectEndedException(Object(), {L"OpenDataSelector", &ISolidWorksAddIn::OpenDataSelector}, code);
    EXPECT_EQ(AddInLog(), Texts{});
    EXPECT_EQ(BoxTexts(), Texts{});
  }
};

TEST_F(Replace, ReplacesEveryInstanceAndKeepsPositionsAndMates) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring screw = MakeModel(L"螺钉.sldprt");
  ReplaceWith(screw);
  EXPECT_SAME_ENTRIES(HostCalls(),
                      Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
                            L"IModelDoc2::QueryInterface(IAssemblyDoc)()",
                            L"IAssemblyDoc::ReplaceComponents2(\"" + screw + L"\", \"\", true, 0, true)"});
  EXPECT_SAME_ENTRIES(ComponentNames(*assembly), Texts{L"螺钉.sldprt", L"nut.sldprt", L"螺钉.sldprt"});
  EXPECT_EQ(assembly->components[2]->record.position.x, 2);
  ASSERT_EQ(assembly->model.mates.size(), 2u);
  EXPECT_EQ(assembly->model.mates[0].first, assembly->components[0]->record.name);
  EXPECT_EQ(assembly->model.mates[0].second, L"nut-1");
  EXPECT_EQ(assembly->model.mates[1].second, assembly->components[2]->record.name);
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Replace, DoesNotCloseAReplacementThatIsOpen) {
  ConnectAndLogIn();
  const std::wstring screw = MakeModel(L"screw.sldprt");
  m_host->Open(screw);
  OpenAssembly();
  ReplaceWith(screw);
  EXPECT_EQ(OpenNames(), (Texts{L"screw.sldprt", L"Top.sldasm"}));
}

TEST_F(Replace, InAPartOrADrawingShowsAMessageAndReplacesNothing) {
  ConnectAndLogIn();
  for (const wchar_t* active : {L"active.sldprt", L"active.slddrw"}) {
    m_home.Reset();
    m_host->Open(MakeModel(active));
    m_host->GetJournal().Clear();
    ExpectBox();
    ReplaceWith(MakeModel(L"screw.sldprt"));
    EXPECT_EQ(CalledMethods(), (Texts{L"ISldWorks::get_IActiveDoc2", L"IModelDoc2::GetType"}));
    EXPECT_EQ(BoxTexts().back(), shown::kNotSupported);
    EXPECT_EQ(LinesAtBoxes().back(), 0u) << "shown before it is logged";
    EXPECT_EQ(m_home.LogLines(), Texts{ReplaceLine(928, L"moduleType != swDocASSEMBLY")});
  }
}

TEST_F(Replace, EndsWithInvalidPointerWithoutADocument) {
  ConnectAndLogIn();
  ExpectEndedWith(E_POINTER, MakeModel(L"screw.sldprt"));
}

TEST_F(Replace, EndsWithTheCodeOfAFailedQueryForTheAssembly) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"IModelDoc2::QueryInterface(IAssemblyDoc)", cad_host::Faults::kEvery,
                           E_OUTOFMEMORY);
  ExpectEndedWith(E_OUTOFMEMORY, MakeModel(L"screw.sldprt"));
  EXPECT_EQ(m_host->GetJournal().Calls(kReplace).size(), 0u);
}

TEST_F(Replace, LogsTheCodeOfTheFirstCallIfTheAssemblyLacksItsInterface) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"IModelDoc2::QueryInterface(IAssemblyDoc)", 1, E_NOINTERFACE);
  ExpectBox();
  ReplaceWith(MakeModel(L"screw.sldprt"));
  ExpectShownAndLogged(shown::kReplacementFailed, ReplaceLine(937, L"iSwApp->get_IActiveDoc2", S_OK));
}

TEST_F(Replace, ShowsAndLogsThatTheActiveDocumentIsNotAvailable) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"ISldWorks::get_IActiveDoc2", 1, RPC_E_SERVERFAULT);
  ExpectBox();
  ReplaceWith(MakeModel(L"screw.sldprt"));
  ExpectShownAndLogged(shown::kReplacementFailed,
                       ReplaceLine(917, L"iSwApp->get_IActiveDoc2", RPC_E_SERVERFAULT));
  EXPECT_EQ(m_boxes->Boxes()[0].caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes()[0].buttons, std::vector<int>{IDOK});
}

/// A result of the host.
struct HostResult {
  const char* name;
  HRESULT code;
};

/// Results that mean that nothing was replaced.
class FailedReplacement : public Replace, public testing::WithParamInterface<HostResult> {};

TEST_P(FailedReplacement, IsShownAndLoggedAndThenTheReplacementIsClosed) {
  ConnectAndLogIn();
  const std::wstring screw = MakeModel(L"screw.sldprt");
  m_host->Open(screw);
  OpenAssembly();
  m_host->GetFaults().Fail(kReplace, 1, GetParam().code);
  m_host->GetFaults().Before(L"ISldWorks::CloseDoc", 1, [this] { EXPECT_EQ(AddInLog().size(), 1u); });
  ExpectBox();
  ReplaceWith(screw);
  ExpectShownAndLogged(shown::kReplacementFailed,
                       ReplaceLine(948, L"pAssDoc->ReplaceComponents2", GetParam().code));
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::CloseDoc(\"" + screw + L"\")");
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
}

INSTANTIATE_TEST_SUITE_P(, FailedReplacement,
                         testing::Values(HostResult{"Failure", E_FAIL},
                                         HostResult{"Unexpected", E_UNEXPECTED}, HostResult{"False", S_FALSE},
                                         HostResult{"MinusOne", -1}),
                         CaseName<HostResult>);

/// Results that count as success, although the host returns false for "replaced".
class AcceptedReplacement : public Replace, public testing::WithParamInterface<HostResult> {};

TEST_P(AcceptedReplacement, ShowsAndLogsNothing) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(kReplace, 1, GetParam().code);
  ReplaceWith(MakeModel(L"screw.sldprt"));
  EXPECT_EQ(BoxTexts(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(, AcceptedReplacement,
                         testing::Values(HostResult{"Ok", S_OK}, HostResult{"Two", 2},
                                         HostResult{"Greatest", 0x7FFFFFFF}),
                         CaseName<HostResult>);

TEST_F(Replace, PassesAPathWithoutAFolderToTheHostAsItIs) {
  ConnectAndLogIn();
  OpenAssembly();
  for (const wchar_t* path : {L"", L"screw.sldprt"}) {
    m_host->GetFaults().Fail(kReplace, 1, E_INVALIDARG);
    ExpectBox();
    ReplaceWith(path);
    const Texts calls = HostCalls();
    EXPECT_EQ(calls.at(calls.size() - 2),
              kReplace + (L"(\"" + std::wstring(path)) + L"\", \"\", true, 0, true)");
    EXPECT_EQ(calls.back(), L"ISldWorks::CloseDoc(\"" + std::wstring(path) + L"\")");
  }
  EXPECT_SAME_ENTRIES(m_home.LogLines(),
                      Texts(2, ReplaceLine(948, L"pAssDoc->ReplaceComponents2", E_INVALIDARG)));
}

TEST_F(Replace, CallsTheHostEvenIfNothingIsSelected) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  assembly->selection.clear();
  ReplaceWith(MakeModel(L"screw.sldprt"));
  EXPECT_EQ(CalledMethods().back(), kReplace);
  EXPECT_SAME_ENTRIES(ComponentNames(*assembly), Texts{L"bolt.sldprt", L"nut.sldprt", L"bolt.sldprt"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// A language of the user, and the texts in it.
struct Language {
  const char* name;
  LANGID id;
  const wchar_t* failed;
  const wchar_t* not_supported;
};

class ReplacementTexts : public Replace, public testing::WithParamInterface<Language> {};

TEST_P(ReplacementTexts, AreInTheUsersLanguage) {
  ConnectAndLogIn();
  const std::wstring screw = MakeModel(L"screw.sldprt");
  const UserLanguage language(GetParam().id);
  OpenAssembly();
  m_host->GetFaults().Fail(kReplace, 1, E_FAIL);
  ExpectBox();
  ReplaceWith(screw);
  m_host->Open(screw);
  ExpectBox();
  ReplaceWith(screw);
  EXPECT_EQ(BoxTexts(), (Texts{GetParam().failed, GetParam().not_supported}));
}

INSTANTIATE_TEST_SUITE_P(
    , ReplacementTexts,
    testing::Values(Language{"English", 0x0809, shown::kReplacementFailed, shown::kNotSupported},
                    Language{"SimplifiedChinese", 0x0804, L"模型替换失败", L"当前模型不支持替换"},
                    Language{"TraditionalChinese", 0x0404, L"模型替換失敗", L"當前模型不支持替換"}),
    CaseName<Language>);

}  // namespace
