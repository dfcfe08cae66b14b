// Inserting files that the PLM client names into the active assembly.
#include <gtest/gtest.h>

#include "case_name.h"
#include "documents_fixture.h"
#include "list_difference.h"
#include "log_line.h"
#include "method_case_name.h"
#include "opening_faults.h"

namespace {

std::wstring InsertLine(int line, const std::wstring& text, HRESULT code) {
  return ErrorLine(line, L"InsertChildFile", text, code);
}

class Insert : public DocumentsFixture {
 protected:
  void InsertFile(const std::wstring& path) { PickFilesWithSuccess({{"InsertFile", {path}}}); }
};

TEST_F(Insert, AddsTheFileAtThePickPointAndClosesItsDocument) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"零件 é 😀.sldprt");
  InsertFile(part);
  EXPECT_SAME_ENTRIES(
      HostCalls(),
      Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::GetType()",
            L"ISldWorks::OpenDoc6(\"" + part + L"\", 1, 1, \"\")",
            L"IModelDoc2::QueryInterface(IAssemblyDoc)()", L"IModelDoc2::get_ISelectionManager()",
            L"ISelectionMgr::IGetSelectionPoint2(1, -1)",
            L"IAssemblyDoc::AddComponent5(\"" + part + L"\", 0, \"\", false, \"\", 0.25, -1.5, 3)",
            L"ISldWorks::CloseDoc(\"" + part + L"\")"});
  ASSERT_EQ(assembly->components.size(), 4u);
  const auto& added = assembly->components.back()->record;
  EXPECT_EQ(added.path, part);
  EXPECT_EQ(std::vector({added.position.x, added.position.y, added.position.z}),
            std::vector({kPicked.x, kPicked.y, kPicked.z}));
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Insert, UsesThePointOfTheFirstSelectedObjectEvenIfThatIsAFace) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  assembly->selection = {{nullptr, {7, 8, 9}}, {assembly->components[0], kPicked}};
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(assembly->components.at(3)->record.position.y, 8);
}

TEST_F(Insert, ClosesTheFileEvenIfTheUserHadOpenedIt) {
  ConnectAndLogIn();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->Open(part);
  OpenAssembly();
  InsertFile(part);
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
}

TEST_F(Insert, AddsSeveralFilesInTheirOrder) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  PickFilesWithSuccess({{"InsertFile", {part, MakeModel(L"y.SLDASM"), part}}});
  EXPECT_SAME_ENTRIES(ComponentNames(*assembly), Texts{L"bolt.sldprt", L"nut.sldprt", L"bolt.sldprt",
                                                       L"x.sldprt", L"y.SLDASM", L"x.sldprt"});
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
}

/// A file, and the type that the add-in passes to the host to open it.
struct TypedFile {
  const char* name;
  const wchar_t* file;
  swDocumentTypes_e type;
  bool opens;
};

class InsertedType : public Insert, public testing::WithParamInterface<TypedFile> {};

TEST_P(InsertedType, IsAssemblyIfTheWholePathContainsItsExtensionElsePart) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  m_folder.MakeFolder(L"a.sldprt.bak");
  m_folder.MakeFolder(L"a.SldAsm.bak");
  m_folder.MakeFolder(L"a.slddrw.bak");
  const std::wstring path = MakeModel(GetParam().file);
  if (!GetParam().opens) ExpectBox();
  InsertFile(path);
  EXPECT_EQ(HostCalls().at(2),
            L"ISldWorks::OpenDoc6(\"" + path + L"\", " + std::to_wstring(GetParam().type) + L", 1, \"\")");
  EXPECT_EQ(assembly->components.size(), GetParam().opens ? 4u : 3u);
}

INSTANTIATE_TEST_SUITE_P(
    , InsertedType,
    testing::Values(
        TypedFile{"Part", L"x.sldprt", swDocPART, true},
        TypedFile{"PartInUpperCase", L"X.SLDPRT", swDocPART, true},
        TypedFile{"Assembly", L"x.sldasm", swDocASSEMBLY, true},
        TypedFile{"AssemblyInUpperCase", L"X.SLDASM", swDocASSEMBLY, true},
        TypedFile{"AssemblyInAFolderNamedLikeAPart", L"a.sldprt.bak\\x.sldasm", swDocASSEMBLY, true},
        TypedFile{"PartInAFolderNamedLikeAnAssembly", L"a.SldAsm.bak\\x.sldprt", swDocASSEMBLY, false},
        TypedFile{"PartInAFolderNamedLikeADrawing", L"a.slddrw.bak\\x.sldprt", swDocPART, true},
        TypedFile{"DrawingInAFolderNamedLikeAPart", L"a.sldprt.bak\\x.slddrw", swDocPART, false}),
    CaseName<TypedFile>);

/// A path that names neither a part nor an assembly.
struct OtherPath {
  const char* name;
  const wchar_t* path;
};

class RejectedInsertion : public Insert, public testing::WithParamInterface<OtherPath> {};

TEST_P(RejectedInsertion, ShowsAMessageBeforeAnyHostCall) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetJournal().Clear();
  ExpectBox();
  InsertFile(GetParam().path);
  EXPECT_EQ(BoxTexts(), Texts{shown::kWrongFileType});
  EXPECT_EQ(m_boxes->Boxes().at(0).caption, L"Collaborative management");
  EXPECT_EQ(m_boxes->Boxes().at(0).buttons, std::vector<int>{IDOK});
  EXPECT_EQ(HostCalls(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(, RejectedInsertion,
                         testing::Values(OtherPath{"Drawing", L"C:\\w\\sheet.slddrw"},
                                         OtherPath{"DrawingInUpperCase", L"C:\\w\\SHEET.SLDDRW"},
                                         OtherPath{"OtherExtension", L"C:\\w\\readme.txt"},
                                         OtherPath{"ExtensionWithoutAPoint", L"C:\\w\\sldprt"},
                                         OtherPath{"BlankInTheExtension", L"C:\\w\\x.sld prt"},
                                         OtherPath{"Empty", L""}),
                         CaseName<OtherPath>);

TEST_F(Insert, DoesNothingWithoutADocument) {
  ConnectAndLogIn();
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Insert, IntoAPartOrADrawingLogsAnErrorAndLeavesTheFileOpen) {
  ConnectAndLogIn();
  for (const wchar_t* active : {L"active.sldprt", L"active.slddrw"}) {
    m_home.Reset();
    const auto document = m_host->Open(MakeModel(active));
    m_host->GetJournal().Clear();
    const std::wstring part = MakeModel(L"x.sldprt");
    InsertFile(part);
    EXPECT_EQ(m_home.LogLines(), Texts{InsertLine(856, L"iSwModel->QueryInterface: " + part, E_NOINTERFACE)});
    EXPECT_EQ(OpenNames(), (Texts{active, L"x.sldprt"}));
    EXPECT_EQ(CalledMethods().back(), L"IModelDoc2::QueryInterface(IAssemblyDoc)");
    EXPECT_EQ(document->components.size(), 0u);
    while (!m_host->OpenDocuments().empty()) m_host->Close(m_host->ActiveDocument());
  }
}

TEST_F(Insert, LogsTheHostsResultIfNothingIsSelected) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  assembly->selection.clear();
  const std::wstring part = MakeModel(L"x.sldprt");
  InsertFile(part);
  EXPECT_EQ(m_home.LogLines(),
            Texts{InsertLine(872, L"iSelectionMgr->IGetSelectionPoint2: " + part, E_FAIL)});
  EXPECT_EQ(assembly->components.size(), 3u);
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
}

TEST_F(Insert, LogsAndThenShowsThatTheFileCannotBeOpened) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  ExpectBox();
  InsertFile(missing);
  EXPECT_EQ(m_home.LogLines(), Texts{InsertLine(847, L"OpenDoc6 failed at " + missing, S_OK)});
  EXPECT_EQ(BoxTexts(), Texts{shown::OpenFailed(missing)});
  EXPECT_EQ(LinesAtBoxes(), std::vector<std::size_t>{1}) << "logged before the message";
  EXPECT_EQ(CalledMethods().back(), L"ISldWorks::OpenDoc6");
}

TEST_F(Insert, SucceedsEvenIfTheHostReportsErrorsAndWarningsOfTheFile) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  ReportErrorsAndWarnings(m_host->GetFaults());
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(assembly->components.size(), 4u);
  EXPECT_EQ(OpenNames(), Texts{L"Top.sldasm"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Insert, LogsAndThenShowsThatOpeningFailsAlthoughTheHostReturnsADocument) {
  ConnectAndLogIn();
  OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  FailWithADocument(m_host->GetFaults(), E_ACCESSDENIED);
  ExpectBox();
  InsertFile(part);
  EXPECT_EQ(m_home.LogLines(), Texts{InsertLine(847, L"OpenDoc6 failed at " + part, E_ACCESSDENIED)});
  EXPECT_EQ(BoxTexts(), Texts{shown::OpenFailed(part)});
  EXPECT_EQ(CalledMethods().back(), L"ISldWorks::OpenDoc6");
}

/// A call that fails after the file was opened.
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
                                         L"IAssemblyDoc::AddComponent5"),
                         MethodCaseName);

TEST_F(Insert, ShowsThatNoComponentWasAddedAndLeavesTheFileOpen) {
  ConnectAndLogIn();
  OpenAssembly();
  m_host->GetFaults().HideResult(L"IAssemblyDoc::AddComponent5");
  ExpectBox();
  InsertFile(MakeModel(L"x.sldprt"));
  EXPECT_EQ(BoxTexts(), Texts{shown::kNotAdded});
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
}

TEST_F(Insert, EndsWithInvalidPointerWithoutASelectionManager) {
  ConnectAndLogIn();
  const auto assembly = OpenAssembly();
  const std::wstring part = MakeModel(L"x.sldprt");
  m_host->GetFaults().ReturnNothing(L"IModelDoc2::get_ISelectionManager", cad_host::Faults::kEvery);
  const auto picked = PickFiles({{"InsertFile", {part}}});
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, E_POINTER);
  EXPECT_EQ(OpenNames(), (Texts{L"Top.sldasm", L"x.sldprt"}));
  m_host->Activate(assembly);
  EXPECT_NE(PlatformError(), L"");
  ExpectEndedException(Object(), {L"OpenDataSelector", &ISolidWorksAddIn::OpenDataSelector}, E_POINTER);
  EXPECT_EQ(AddInLog(), Texts{});
}

}  // namespace
