// Files that the PLM client names become components of the active assembly.
#include <gtest/gtest.h>

#include "documents_fixture.h"

namespace {

std::wstring InsertLine(int line, const std::wstring& text) {
  return FailureLine(line, L"InsertChildFile", text);
}

class Insert : public DocumentsTest {
 protected:
  void InsertFile(const std::wstring& path) { Bring({{"InsertFile", {path}}}); }
};

TEST_F(Insert, PutsTheFileAtThePickPointAndClosesItsDocument) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"零件 é 😀.sldprt");
  InsertFile(part);
  EXPECT_EQ(HostCalls(),
            (Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
                   L"ISldWorks::OpenDoc6(\"" + part + L"\", 1, 1, \"\")",
                   L"IModelDoc2::QueryInterface(IAssemblyDoc)()", L"IModelDoc2::get_ISelectionManager()",
                   L"ISelectionMgr::IGetSelectionPoint2(1, -1)",
                   L"IAssemblyDoc::AddComponent5(\"" + part + L"\", 0, \"\", false, \"\", 0.25, -1.5, 3)",
                   L"ISldWorks::CloseDoc(\"" + part + L"\")"}));
  ASSERT_EQ(assembly->components.size(), 4u);
  const auto& added = assembly->components.back()->record;
  EXPECT_EQ(added.path, part);
  EXPECT_EQ(std::vector({added.position.x, added.position.y, added.position.z}),
            std::vector({kPicked.x, kPicked.y, kPicked.z}));
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Insert, TakesThePointOfTheFirstSelectedObjectAlsoWhereThatIsAFace) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  assembly->selection = {{nullptr, {7, 8, 9}}, {assembly->components[0], kPicked}};
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(assembly->components.at(3)->record.position.y, 8);
}

TEST_F(Insert, ClosesTheFileAlsoWhereThePersonHadItOpen) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->Open(part);
  OpenAssembly();
  InsertFile(part);
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
}

TEST_F(Insert, PutsSeveralFilesInInTheirOrder) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  Bring({{"InsertFile", {part, MakeModel(L"y.SLDASM"), part}}});
  EXPECT_EQ(ComponentNames(*assembly),
            (Texts{L"bolt.sldprt", L"nut.sldprt", L"bolt.sldprt", L"x.sldprt", L"y.SLDASM", L"x.sldprt"}));
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
}

/// A file, and the type that the host is asked to open it as.
struct TypedFile {
  const wchar_t* name;
  swDocumentTypes_e type;
  bool opens;
};

class InsertedType : public Insert, public testing::WithParamInterface<TypedFile> {};

TEST_P(InsertedType, IsAnAssemblyWhereverThePathNamesOneElseAPart) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  m_folder.MakeFolder(L"a.sldprt.bak");
  m_folder.MakeFolder(L"a.SldAsm.bak");
  m_folder.MakeFolder(L"a.slddrw.bak");
  const std::wstring path = MakeModel(GetParam().name);
  if (!GetParam().opens) ExpectBox();
  InsertFile(path);
  EXPECT_EQ(HostCalls().at(2),
            L"ISldWorks::OpenDoc6(\"" + path + L"\", " + std::to_wstring(GetParam().type) + L", 1, \"\")");
  EXPECT_EQ(assembly->components.size(), GetParam().opens ? 4u : 3u);
}

INSTANTIATE_TEST_SUITE_P(, InsertedType,
                         testing::Values(TypedFile{L"x.sldprt", swDocPART, true},
                                         TypedFile{L"X.SLDPRT", swDocPART, true},
                                         TypedFile{L"x.sldasm", swDocASSEMBLY, true},
                                         TypedFile{L"X.SLDASM", swDocASSEMBLY, true},
                                         TypedFile{L"a.sldprt.bak\\x.sldasm", swDocASSEMBLY, true},
                                         TypedFile{L"a.SldAsm.bak\\x.sldprt", swDocASSEMBLY, false},
                                         TypedFile{L"a.slddrw.bak\\x.sldprt", swDocPART, true},
                                         TypedFile{L"a.sldprt.bak\\x.slddrw", swDocPART, false}));

class RefusedForInsertion : public Insert, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(RefusedForInsertion, IsToldBeforeTheHostIsAskedAnything) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetJournal().Clear();
  ExpectBox();
  InsertFile(GetParam());
  EXPECT_EQ(BoxTexts(), Texts{shown::kWrongFileType});
  EXPECT_EQ(m_boxes->Boxes().at(0).caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes().at(0).buttons, std::vector<int>{IDOK});
  EXPECT_EQ(HostCalls(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(, RefusedForInsertion,
                         testing::Values(L"C:\\w\\sheet.slddrw", L"C:\\w\\SHEET.SLDDRW", L"C:\\w\\readme.txt",
                                         L"C:\\w\\sldprt", L"C:\\w\\x.sld prt", L""));

TEST_F(Insert, WithoutADocumentIsSilent) {
  ConnectAndLogIn();
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Insert, IntoAPartOrADrawingIsLoggedAndLeavesTheFileOpen) {
  ConnectAndLogIn();
  for (const wchar_t* active : {L"active.sldprt", L"active.slddrw"}) {
    m_home.Reset();
    const auto document = m_host->Open(MakeModel(active));
    m_host->GetJournal().Clear();
    const std::wstring part = MakeModel(L"x.sldprt");
    InsertFile(part);
    EXPECT_EQ(m_home.LogLines(),
              Texts{InsertLine(856, L"iSwModel->QueryInterface: " + part + L"<hr=0x80004002>")});
    EXPECT_EQ(OpenNames(), (Texts{active, L"x.sldprt"}));
    EXPECT_EQ(CalledMethods().back(), L"IModelDoc2::QueryInterface(IAssemblyDoc)");
    EXPECT_EQ(document->components.size(), 0u);
    while (!m_host->OpenDocuments().empty()) m_host->Close(m_host->ActiveDocument());
  }
}

TEST_F(Insert, WithNothingSelectedIsLoggedWithTheHostsAnswer) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  assembly->selection.clear();
  const std::wstring part = MakeModel(L"x.sldprt");
  InsertFile(part);
  EXPECT_EQ(m_home.LogLines(),
            Texts{InsertLine(872, L"iSelectionMgr->IGetSelectionPoint2: " + part + L"<hr=0x80004005>")});
  EXPECT_EQ(assembly->components.size(), 3u);
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
}

TEST_F(Insert, OfAFileThatCannotBeOpenedIsLoggedThenTold) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  ExpectBox();
  InsertFile(missing);
  EXPECT_EQ(m_home.LogLines(), Texts{InsertLine(847, L"OpenDoc6 failed at " + missing + L"<hr=0x0>")});
  EXPECT_EQ(BoxTexts(), Texts{OpenFailed(missing)});
  EXPECT_EQ(LinesAtBoxes(), std::vector<std::size_t>{1}) << "the log comes first here";
  EXPECT_EQ(CalledMethods().back(), L"ISldWorks::OpenDoc6");
}

/// Failures after the file was opened.
class FailedInsertion : public Insert, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(FailedInsertion, LeavesTheFileOpenInFrontOfTheAssembly) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->GetFaults().Fail(GetParam(), 1, E_FAIL);
  InsertFile(part);
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
  EXPECT_EQ(CalledMethods().back(), GetParam());
  EXPECT_EQ(assembly->components.size(), 3u);
  EXPECT_EQ(AddInLog().size(), 1u);
  EXPECT_EQ(BoxTexts(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(, FailedInsertion,
                         testing::Values(L"IModelDoc2::QueryInterface(IAssemblyDoc)",
                                         L"IModelDoc2::get_ISelectionManager",
                                         L"ISelectionMgr::IGetSelectionPoint2",
                                         L"IAssemblyDoc::AddComponent5"));

TEST_F(Insert, ThatGivesNoComponentIsToldAndLeavesTheFileOpen) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().HideResult(L"IAssemblyDoc::AddComponent5");
  ExpectBox();
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(BoxTexts(), Texts{shown::kNotAdded});
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
}

TEST_F(Insert, WithoutASelectionManagerRaisesAComError) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->GetFaults().ReturnNothing(L"IModelDoc2::get_ISelectionManager", cad_host::Faults::kEvery);
  const auto picked = PickFiles({{"InsertFile", {part}}});
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, E_POINTER);
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
  m_host->Activate(assembly);
  EXPECT_EQ(RaisedCode([this] { Object()->OpenDataSelector(); }), E_POINTER);
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 1u) << "once, where the host called";
}

}  // namespace
