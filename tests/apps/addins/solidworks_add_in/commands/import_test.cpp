// Commands that import the active document, or a lot of files, into the PLM system.
#include <gtest/gtest.h>

#include "documents/documents_fixture.h"
#include "list_difference.h"
#include "log_line.h"

namespace {

/// A command that sends the active document's path.
struct ImportCommand {
  const wchar_t* callback;
  const char* command;
  HRESULT (STDMETHODCALLTYPE ISolidWorksAddIn::*method)();
  int failure_line;
};

constexpr const char* kDone = R"({"__InvokeResult__":true})";

/// Answers that mean a failure.
constexpr const char* kFailures[] = {"",
                                     " ",
                                     "{}",
                                     "{",
                                     "null",
                                     "true",
                                     "[true]",
                                     "no JSON at all",
                                     R"({"__InvokeResult__":false})",
                                     R"({"__InvokeResult__":null})",
                                     R"({"__InvokeResult__":1})",
                                     R"({"__InvokeResult__":"true"})",
                                     R"({"__INVOKERESULT__":true})",
                                     R"({"result":{"__InvokeResult__":true}})",
                                     R"({"__InvokeResult__":true)"};

class Import : public DocumentsFixture {};

class ImportDocument : public Import, public testing::WithParamInterface<ImportCommand> {
 protected:
  void PickImport() {
    Answer(GetParam().command, kDone);
    EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  }

  /// Picks the command, which sends nothing, shows nothing and logs nothing.
  void PickWithoutEffect() {
    PickImport();
    EXPECT_EQ(Asked(), Requests{});
    EXPECT_EQ(m_home.LogLines(), Texts{});
  }
};

INSTANTIATE_TEST_SUITE_P(, ImportDocument,
                         testing::Values(ImportCommand{L"PlmImportCurrent", "QD_PLMImportCurrent",
                                                       &ISolidWorksAddIn::PlmImportCurrent, 646},
                                         ImportCommand{L"PlmImportChangeItem", "QD_PLMCreateChangeItems",
                                                       &ISolidWorksAddIn::PlmImportChangeItem, 675}),
                         [](const auto& test) { return Utf8(test.param.callback); });

/// The file name of a document, and whether it is imported as a drawing.
using ImportedName = std::pair<const wchar_t*, bool>;

TEST_P(ImportDocument, SendsThePathAndWhetherItNamesADrawing) {
  ConnectAndLogIn();
  m_folder.MakeFolder(L"A.slddrw.bak");
  m_folder.MakeFolder(L"图纸 'é' {1} 😀");
  for (const auto& [name, drawing] :
       {ImportedName{L"A.slddrw", true}, ImportedName{L"B.SLDDRW", false}, ImportedName{L"C.SldDrw", false},
        ImportedName{L"D.sldprt", false}, ImportedName{L"E.sldasm", false},
        ImportedName{L"A.slddrw.bak\\B.sldprt", true}, ImportedName{L"A.slddrw.bak\\C.SLDDRW", true},
        ImportedName{L"F.slddrw.sldprt", true}, ImportedName{L"图纸 'é' {1} 😀\\零件.slddrw", true}}) {
    const std::wstring path = MakeModel(name);
    m_host->Open(path);
    PickImport();
    EXPECT_EQ(Asked().back(), GetParam().command + std::string(R"( {"file_path":")") + JsonEscaped(path) +
                                  (drawing ? R"(","Method":"LotinputDrawing"})" : R"("})"));
  }
  EXPECT_EQ(Asked().size(), 9u);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_P(ImportDocument, SendsAPathOfAnyLength) {
  ConnectAndLogIn();
  const std::wstring folder(100, L'f');
  const std::wstring name = folder + L"\\" + folder + L"\\" + folder;
  m_folder.MakeFolder(name);
  const std::wstring path = MakeModel(name + L"\\a.sldprt");
  EXPECT_GT(path.size(), 300u);
  m_host->Open(path);
  PickImport();
  EXPECT_EQ(Asked(),
            Requests{GetParam().command + std::string(R"( {"file_path":")") + JsonEscaped(path) + R"("})"});
}

TEST_P(ImportDocument, GetsThePathFromTheHostIfTheDocumentIsNotViewOnly) {
  ConnectAndLogIn();
  m_host->Open(MakeModel(L"a.sldprt"));
  PickImport();
  EXPECT_SAME_ENTRIES(HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::IsOpenedViewOnly()",
                                         L"IModelDoc2::GetPathName()"});
}

TEST_P(ImportDocument, SendsThePathOfAReadOnlyDocumentWithChanges) {
  ConnectAndLogIn();
  const auto document = m_host->Open(MakeModel(L"a.sldprt"));
  document->read_only = true;
  document->changed = true;
  PickImport();
  EXPECT_EQ(Asked().size(), 1u);
}

TEST_P(ImportDocument, DoesNothingWithoutADocument) {
  ConnectAndLogIn();
  PickWithoutEffect();
}

TEST_P(ImportDocument, DoesNothingIfTheDocumentWasNeverSaved) {
  ConnectAndLogIn();
  m_host->New(swDocDRAWING);
  PickWithoutEffect();
}

TEST_P(ImportDocument, DoesNothingIfTheFileIsMissing) {
  ConnectAndLogIn();
  m_host->GetQuirks().Set(cad_host::Quirk::kHeldFiles, false);
  const auto document = m_host->Open(MakeModel(L"a.sldprt"));
  ASSERT_TRUE(DeleteFileW(document->path.c_str()));
  PickWithoutEffect();
}

TEST_P(ImportDocument, DoesNothingIfTheDocumentIsViewOnly) {
  ConnectAndLogIn();
  m_host->Open(MakeModel(L"a.sldprt"))->view_only = true;
  PickWithoutEffect();
  EXPECT_EQ(CalledMethods().back(), L"IModelDoc2::IsOpenedViewOnly");
}

TEST_P(ImportDocument, DoesNothingIfAHostCallFails) {
  ConnectAndLogIn();
  m_host->Open(MakeModel(L"a.sldprt"));
  for (const wchar_t* method :
       {L"ISldWorks::get_IActiveDoc2", L"IModelDoc2::IsOpenedViewOnly", L"IModelDoc2::GetPathName"}) {
    m_host->GetFaults().Fail(method, 1, E_FAIL);
    PickWithoutEffect();
    EXPECT_EQ(CalledMethods().back(), method);
  }
}

TEST_P(ImportDocument, LogsAndReturnsAFailure) {
  ConnectAndLogIn();
  m_host->Open(MakeModel(L"a.slddrw"));
  const std::wstring line = ErrorLine(GetParam().failure_line, GetParam().callback,
                                      L"m_invok->Invoke command [QD_PLMImportCurrent] failed", E_FAIL);
  Texts lines;
  for (const char* answer : kFailures) {
    Answer(GetParam().command, answer);
    const ISolidWorksAddInPtr object = Object();
    EXPECT_EQ((object.GetInterfacePtr()->*GetParam().method)(), E_FAIL) << answer;
    lines.push_back(line);
    EXPECT_SAME_ENTRIES(AddInLog(), lines) << answer;
  }
  const auto picked = Pick(GetParam().callback);
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, E_FAIL);
  for (const std::wstring& platform_line : PlatformLog()) {
    EXPECT_NE(platform_line.find(L"is not a JSON object"), std::wstring::npos)
        << "a returned code is not logged again";
  }
}

TEST_F(Import, OfALotSendsAnEmptyRequestWithoutHostCalls) {
  ConnectAndLogIn();
  Answer("QD_PLMLotimport", kDone);
  EXPECT_EQ(Pick(L"PlmLotimport").result, S_OK);
  m_host->Open(MakeModel(L"a.slddrw"));
  EXPECT_EQ(Pick(L"PlmLotimport").result, S_OK);
  EXPECT_EQ(Asked(), (Requests{"QD_PLMLotimport ", "QD_PLMLotimport "}));
  EXPECT_EQ(HostCalls(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(Import, OfALotLogsAndReturnsAFailure) {
  ConnectAndLogIn();
  Texts lines;
  for (const char* answer : kFailures) {
    Answer("QD_PLMLotimport", answer);
    EXPECT_EQ(Object()->PlmLotimport(), E_FAIL) << answer;
    lines.push_back(
        ErrorLine(704, L"PlmLotimport", L"m_invok->Invoke command [QD_PLMLotimport] failed", E_FAIL));
    EXPECT_SAME_ENTRIES(AddInLog(), lines) << answer;
  }
  EXPECT_EQ(Pick(L"PlmLotimport").code, E_FAIL);
}

}  // namespace
