// Files that the PLM client names take the place of the selected component.
#include <gtest/gtest.h>

#include "documents_fixture.h"
#include "module/user_language.h"

namespace {

constexpr const wchar_t* kReplace = L"IAssemblyDoc::ReplaceComponents2";

std::wstring ReplaceLine(int line, const std::wstring& text) {
  return FailureLine(line, L"ReplaceCurrentFile", text);
}

class Replace : public DocumentsTest {
 protected:
  void ReplaceBy(const std::wstring& path) { Bring({{"ReplaceFile", {path}}}); }

  /// One box, and one log line after it.
  void ExpectTold(const std::wstring& box, const std::wstring& line) const {
    EXPECT_EQ(BoxTexts(), Texts{box});
    EXPECT_EQ(LinesAtBoxes(), std::vector<std::size_t>{0}) << "the box comes first";
    EXPECT_EQ(m_home.LogLines(), Texts{line});
  }

  void ExpectRaised(HRESULT code, const std::wstring& path) {
    const auto picked = PickFiles({{"ReplaceFile", {path}}});
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
    EXPECT_EQ(picked.code, code);
    EXPECT_EQ(PlatformLog().size(), 1u);
    EXPECT_EQ(RaisedCode([this] { Object()->OpenDataSelector(); }), code);
    EXPECT_EQ(PlatformLog().size(), 1u) << "logged only where the host called";
    EXPECT_EQ(AddInLog(), Texts{});
    EXPECT_EQ(BoxTexts(), Texts{});
  }
};

TEST_F(Replace, ReplacesEveryInstanceAndKeepsPlacesAndMates) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring screw = MakeModel(L"螺钉.sldprt");
  ReplaceBy(screw);
  EXPECT_EQ(HostCalls(),
            (Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
                   L"IModelDoc2::QueryInterface(IAssemblyDoc)()",
                   L"IAssemblyDoc::ReplaceComponents2(\"" + screw + L"\", \"\", true, 0, true)"}));
  EXPECT_EQ(ComponentNames(*assembly), (Texts{L"螺钉.sldprt", L"nut.sldprt", L"螺钉.sldprt"}));
  EXPECT_EQ(assembly->components[2]->record.position.x, 2);
  ASSERT_EQ(assembly->model.mates.size(), 2u);
  EXPECT_EQ(assembly->model.mates[0].first, assembly->components[0]->record.name);
  EXPECT_EQ(assembly->model.mates[0].second, L"nut-1");
  EXPECT_EQ(assembly->model.mates[1].second, assembly->components[2]->record.name);
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Replace, LeavesAReplacementThatIsOpenAlone) {
  ConnectAndLogIn();
  const std::wstring screw = MakeModel(L"screw.sldprt");
  m_host->Open(screw);
  OpenAssembly();
  ReplaceBy(screw);
  EXPECT_EQ(OpenNames(), (Texts{L"screw.sldprt", L"Top.sldasm"}));
}

TEST_F(Replace, InAPartOrADrawingIsRefusedBeforeAnythingIsReplaced) {
  ConnectAndLogIn();
  for (const wchar_t* active : {L"active.sldprt", L"active.slddrw"}) {
    m_home.Reset();
    m_host->Open(MakeModel(active));
    m_host->GetJournal().Clear();
    ExpectBox();
    ReplaceBy(MakeModel(L"screw.sldprt"));
    EXPECT_EQ(CalledMethods(), (Texts{L"ISldWorks::get_IActiveDoc2", L"IModelDoc2::GetType"}));
    EXPECT_EQ(BoxTexts().back(), shown::kNotSupported);
    EXPECT_EQ(LinesAtBoxes().back(), 0u) << "the box comes first";
    EXPECT_EQ(m_home.LogLines(), Texts{ReplaceLine(928, L"moduleType != swDocASSEMBLY")});
  }
}

TEST_F(Replace, WithoutADocumentRaisesAComErrorWithoutAWord) {
  ConnectAndLogIn();
  ExpectRaised(E_POINTER, MakeModel(L"screw.sldprt"));
}

TEST_F(Replace, RaisesTheCodeOfAHostThatFailsToSayWhetherItIsAnAssembly) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"IModelDoc2::QueryInterface(IAssemblyDoc)", cad_host::Faults::kEvery,
                           E_OUTOFMEMORY);
  ExpectRaised(E_OUTOFMEMORY, MakeModel(L"screw.sldprt"));
  EXPECT_EQ(m_host->GetJournal().Calls(kReplace).size(), 0u);
}

TEST_F(Replace, OfAnAssemblyWithoutItsInterfaceIsToldWithTheCodeOfTheFirstCall) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"IModelDoc2::QueryInterface(IAssemblyDoc)", 1, E_NOINTERFACE);
  ExpectBox();
  ReplaceBy(MakeModel(L"screw.sldprt"));
  ExpectTold(shown::kReplacementFailed, ReplaceLine(937, L"iSwApp->get_IActiveDoc2<hr=0x0>"));
}

TEST_F(Replace, TellsThatTheActiveDocumentCannotBeHad) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(L"ISldWorks::get_IActiveDoc2", 1, RPC_E_SERVERFAULT);
  ExpectBox();
  ReplaceBy(MakeModel(L"screw.sldprt"));
  ExpectTold(shown::kReplacementFailed, ReplaceLine(917, L"iSwApp->get_IActiveDoc2<hr=0x80010105>"));
  EXPECT_EQ(m_boxes->Boxes()[0].caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes()[0].buttons, std::vector<int>{IDOK});
}

/// Results of the host that mean that nothing was replaced, as the log has them.
using FailedResult = std::pair<HRESULT, const wchar_t*>;

class FailedReplacement : public Replace, public testing::WithParamInterface<FailedResult> {};

TEST_P(FailedReplacement, IsToldAndThenTheReplacementIsClosed) {
  ConnectAndLogIn();
  const std::wstring screw = MakeModel(L"screw.sldprt");
  m_host->Open(screw);
  OpenAssembly();
  m_host->GetFaults().Fail(kReplace, 1, GetParam().first);
  m_host->GetFaults().Before(L"ISldWorks::CloseDoc", 1, [this] { EXPECT_EQ(AddInLog().size(), 1u); });
  ExpectBox();
  ReplaceBy(screw);
  ExpectTold(shown::kReplacementFailed,
             ReplaceLine(948, L"pAssDoc->ReplaceComponents2<hr=0x" + std::wstring(GetParam().second) + L">"));
  EXPECT_EQ(HostCalls().back(), L"ISldWorks::CloseDoc(\"" + screw + L"\")");
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
}

INSTANTIATE_TEST_SUITE_P(, FailedReplacement,
                         testing::Values(FailedResult{E_FAIL, L"80004005"},
                                         FailedResult{E_UNEXPECTED, L"8000ffff"}, FailedResult{S_FALSE, L"1"},
                                         FailedResult{-1, L"ffffffff"}));

/// Results that count as success although the host says that nothing was replaced.
class AcceptedReplacement : public Replace, public testing::WithParamInterface<HRESULT> {};

TEST_P(AcceptedReplacement, IsTakenForOneWhateverTheHostSaysBeside) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().Fail(kReplace, 1, GetParam());
  ReplaceBy(MakeModel(L"screw.sldprt"));
  EXPECT_EQ(BoxTexts(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::CloseDoc").size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(, AcceptedReplacement, testing::Values(S_OK, HRESULT{2}, HRESULT{0x7FFFFFFF}));

TEST_F(Replace, WithNothingSelectedIsLeftToTheHost) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  assembly->selection.clear();
  ReplaceBy(MakeModel(L"screw.sldprt"));
  EXPECT_EQ(CalledMethods().back(), kReplace);
  EXPECT_EQ(ComponentNames(*assembly), (Texts{L"bolt.sldprt", L"nut.sldprt", L"bolt.sldprt"}));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// A language of the user, and the texts in it.
struct Language {
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
  ReplaceBy(screw);
  m_host->Open(screw);
  ExpectBox();
  ReplaceBy(screw);
  EXPECT_EQ(BoxTexts(), (Texts{GetParam().failed, GetParam().not_supported}));
}

INSTANTIATE_TEST_SUITE_P(, ReplacementTexts,
                         testing::Values(Language{0x0809, shown::kReplacementFailed, shown::kNotSupported},
                                         Language{0x0804, L"模型替换失败", L"当前模型不支持替换"},
                                         Language{0x0404, L"模型替換失敗", L"當前模型不支持替換"}));

}  // namespace
