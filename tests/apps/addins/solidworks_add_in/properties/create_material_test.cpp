// PlmCreateMaterial: the document that it reads, and how it handles the PLM client's answers.
#include <gtest/gtest.h>

#include "case_name.h"
#include "documents/opening_faults.h"
#include "list_difference.h"
#include "log_line.h"
#include "properties_fixture.h"
#include "result_codes.h"

namespace {

constexpr const char* kCreated = R"({"data":{"no":"M-1"}})";

class CreateMaterial : public PropertiesFixture {
 protected:
  void SetUp() override { ConnectAndLogIn(); }

  void PickAnswering(std::initializer_list<int> answers) {
    for (const int answer : answers) m_boxes->Expect(answer);
    EXPECT_EQ(Pick(L"PlmCreateMaterial").result, S_OK);
  }

  /// The arguments of the host calls that open the document.
  Texts OpenArguments() const {
    Texts arguments;
    for (const auto& call : m_host->GetJournal().Calls(L"ISldWorks::OpenDoc6")) {
      arguments.push_back(call.arguments);
    }
    return arguments;
  }

  const std::string kEmptyRequest = "QD_PLMCreateMaterial ";
};

TEST_F(CreateMaterial, SendsAnEmptyRequestWithoutADocument) {
  Answer("QD_PLMCreateMaterial", kCreated);
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
  EXPECT_EQ(HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()"});
}

TEST_F(CreateMaterial, SendsAnEmptyRequestIfTheDocumentWasNeverSaved) {
  Answer("QD_PLMCreateMaterial", kCreated);
  m_host->New(swDocPART);
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
}

TEST_F(CreateMaterial, SendsAnEmptyRequestIfTheFileIsMissing) {
  OpenPartWithThree()->path = m_folder.Path(L"gone.sldprt");
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
}

TEST_F(CreateMaterial, SendsAnEmptyRequestIfTheDocumentIsViewOnly) {
  OpenPartWithThree()->view_only = true;
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
}

TEST_F(CreateMaterial, SendsAnEmptyObjectIfTheDocumentHasNoProperties) {
  Open(L"part.sldprt", {});
  PickAnswering({IDOK, IDCANCEL});
  EXPECT_EQ(Asked(), Requests{R"(QD_PLMCreateMaterial {"extract_info":{}})"});
}

TEST_F(CreateMaterial, SendsResolvedValuesOfTheDocumentLevel) {
  const auto document = Open(L"part.sldprt", {{.name = L"W", .text = L"\"SW-Mass@part.sldprt\""},
                                              {.name = L"N", .text = L"7", .type = swCustomInfoNumber}});
  document->model.quantities = {{L"SW-Mass", L"1.25"}};
  document->model.configurations[L"Default"] = {{.name = L"only here", .text = L"x"}};
  document->configuration = L"Default";
  PickAnswering({IDOK, IDCANCEL});
  EXPECT_EQ(Asked(), Requests{R"(QD_PLMCreateMaterial {"extract_info":{"W":"1.25","N":"7"}})"});
}

/// A document's file name, and the type that the add-in passes to the host to open it.
struct Extension {
  const char* name;
  const wchar_t* file;
  swDocumentTypes_e type;
  int passed;
};

class DocumentExtension : public CreateMaterial, public testing::WithParamInterface<Extension> {};

TEST_P(DocumentExtension, DeterminesTheTypeToOpen) {
  const Extension& extension = GetParam();
  const auto document = m_host->New(extension.type);
  document->model.properties = {{.name = L"A", .text = L"1"}};
  // The host's own dialogs would not save it under this name.
  document->path = m_folder.Write(extension.file, "file");
  PickAnswering({IDOK, IDCANCEL});
  EXPECT_EQ(OpenArguments(),
            Texts{L"\"" + document->path + L"\", " + std::to_wstring(extension.passed) + L", 1, null"});
  EXPECT_EQ(Asked(), Requests{R"(QD_PLMCreateMaterial {"extract_info":{"A":"1"}})"});
}

const Extension kExtensions[] = {
    {"Part", L"bolt.sldprt", swDocPART, 1},
    {"Assembly", L"top.sldasm", swDocASSEMBLY, 2},
    {"Drawing", L"sheet.slddrw", swDocDRAWING, 3},
    {"PartInUpperCase", L"Part1.SLDPRT", swDocPART, 1},
    {"DrawingInMixedCase", L"Sheet.SldDrw", swDocDRAWING, 3},
    // Only the last extension counts.
    {"TwoExtensions", L"a.sldprt.sldasm", swDocASSEMBLY, 2},
    {"DrawingInAFolderNamedLikeAPart", L"folder.sldprt\\a.slddrw", swDocDRAWING, 3},
    {"OtherExtensionAfterAPart", L"bolt.sldprt.bak", swDocPART, 0},
    {"OtherExtension", L"bolt.txt", swDocPART, 0},
    {"NoExtension", L"bolt", swDocPART, 0},
    {"NoExtensionInAFolderNamedLikeAPart", L"folder.sldprt\\bolt", swDocPART, 0},
    // A version number after the extension is ignored.
    {"VersionOfAPart", L"bolt.sldprt.12", swDocPART, 1},
    {"VersionOfAnAssembly", L"Top.SLDASM.1", swDocASSEMBLY, 2},
    {"VersionWithoutExtension", L"bolt.12", swDocPART, 0},
    {"TwoVersions", L"bolt.sldprt.1.2", swDocPART, 0},
};

INSTANTIATE_TEST_SUITE_P(, DocumentExtension, testing::ValuesIn(kExtensions), CaseName<Extension>);

TEST_F(CreateMaterial, DeterminesTheTypeOfEachDocument) {
  for (const wchar_t* name : {L"a.txt", L"b.sldasm", L"c.sldprt"}) {
    const auto document = m_host->New(swDocPART);
    document->path = m_folder.Write(name, "file");
    PickAnswering({IDOK, IDCANCEL});
  }
  const Texts opened = OpenArguments();
  ASSERT_EQ(opened.size(), 3u);
  EXPECT_TRUE(opened[0].ends_with(L"a.txt\", 0, 1, null"));
  EXPECT_TRUE(opened[1].ends_with(L"b.sldasm\", 2, 1, null"));
  EXPECT_TRUE(opened[2].ends_with(L"c.sldprt\", 1, 1, null"));
}

TEST_F(CreateMaterial, ReadsADocumentAlthoughTheHostReportsErrorsAndWarnings) {
  OpenPartWithThree();
  ReportErrorsAndWarnings(m_host->GetFaults());
  PickAnswering({IDOK, IDCANCEL});
  EXPECT_EQ(Asked(), Requests{R"(QD_PLMCreateMaterial {"extract_info":{"A":"1","B":"2","C":"3"}})"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(CreateMaterial, EndsIfOpeningFailsAlthoughTheHostReturnsADocument) {
  const auto document = OpenPartWithThree();
  FailWithADocument(m_host->GetFaults(), E_ACCESSDENIED);
  m_boxes->Expect(IDOK);
  EXPECT_EQ(Pick(L"PlmCreateMaterial").code, E_ACCESSDENIED);
  EXPECT_EQ(Asked(), Requests{});
  EXPECT_EQ(AddInLog(), Texts{ErrorLine(1267, L"PlmCreateMaterial",
                                        L"iSwApp->OpenDoc6 failed, opened file path: " + document->path,
                                        E_ACCESSDENIED)});
}

TEST_F(CreateMaterial, EndsIfNoMaterialWasCreated) {
  Answer("QD_PLMCreateMaterial", "{}");
  OpenPartWithThree();
  PickAnswering({IDOK});
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Boxes(), Texts{L"extract?"});
}

TEST_F(CreateMaterial, EndsIfNoMaterialWasCreatedWithoutProperties) {
  Answer("QD_PLMCreateMaterial", "{}");
  OpenPartWithThree();
  PickAnswering({IDCANCEL});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
  EXPECT_EQ(Boxes(), Texts{L"extract?"});
}

TEST_F(CreateMaterial, FillsBackOnlyPropertiesThatTheDocumentHas) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMCreateMaterial", kCreated);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"D":"new","B":"y","a":"x"}})");
  PickAnswering({IDCANCEL, IDOK, IDOK});
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=1", L"B=y", L"C=3"});
}

TEST_F(CreateMaterial, HoldsTheDocumentWhileItSendsItsValues) {
  OpenPartWithThree();
  std::vector<std::size_t> held;
  ServeWith([&](const plm_client::Request&, std::stop_token) {
    held.push_back(m_host->HeldReferences().size());
    return plm_client::Reply::Text(R"({"data":{}})");
  });
  const std::size_t before = m_host->HeldReferences().size();
  PickAnswering({IDOK, IDOK});
  ServeWith(std::ref(m_script));
  EXPECT_EQ(held, (std::vector<std::size_t>{before + 1, before}));
}

TEST_F(CreateMaterial, EndsAfterTheQuestionIfTheAnswerNamesNoMaterial) {
  OpenPartWithThree();
  const char* const answers[] = {"",
                                 "{ }",
                                 " {}",
                                 "{",
                                 "[1]",
                                 "null",
                                 R"({"Data":{"no":"1"}})",
                                 R"({"other":1})",
                                 R"({"data":{"no":"1"})",
                                 R"("data")"};
  for (const char* answer : answers) {
    Answer("QD_PLMCreateMaterial", answer);
    PickAnswering({IDCANCEL, IDOK});
  }
  EXPECT_SAME_ENTRIES(Asked(), Requests(std::size(answers), kEmptyRequest));
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 5u) << "the answers that are not JSON objects";
}

TEST_F(CreateMaterial, WritesAndShowsNothingIfTheAnswerHasNoPropertiesToFillBack) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMCreateMaterial", kCreated);
  for (const char* answer :
       {"", "{}", "{", "[]", R"({"A":"x"})", R"({"Material_property_back_fill":{"A":"x"}})",
        R"({"material_property_back_fill":{"A":"x"})"}) {
    Answer("QD_PLMMaterialBackFill", answer);
    PickAnswering({IDCANCEL, IDOK});
  }
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=1", L"B=2", L"C=3"});
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 3u) << "the answers that are not JSON objects";
}

TEST_F(CreateMaterial, ThrowsThePlatformExceptionIfTheMaterialIsNotAnObject) {
  OpenPartWithThree();
  for (const char* answer : {R"({"data":"M-1"})", R"({"data":null})", R"({"data":[{}]})", R"({"data":7})"}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");  // Reset deleted it; the pipe is open already
    Answer("QD_PLMCreateMaterial", answer);
    for (const int button : {IDCANCEL, IDOK}) m_boxes->Expect(button);
    const auto picked = Pick(L"PlmCreateMaterial");
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION) << answer;
    EXPECT_EQ(picked.code, hr::kJsonWrongType) << answer;
    EXPECT_EQ(picked.description, L"json member [data] is not Object!") << answer;
    EXPECT_EQ(AddInLog(), Texts{});
    EXPECT_EQ(PlatformLog().size(), 1u) << answer;
  }
  EXPECT_SAME_ENTRIES(Asked(), Requests(4, kEmptyRequest));
}

TEST_F(CreateMaterial, ThrowsThePlatformExceptionIfThePropertiesAreNotAnObject) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMCreateMaterial", kCreated);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":"A"})");
  for (const int button : {IDCANCEL, IDOK}) m_boxes->Expect(button);
  const auto picked = Pick(L"PlmCreateMaterial");
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, hr::kJsonWrongType);
  EXPECT_EQ(picked.description, L"json member [material_property_back_fill] is not Object!");
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=1", L"B=2", L"C=3"});
}

TEST_F(CreateMaterial, SendsTheMaterialAsCompactText) {
  OpenPartWithThree();
  Answer("QD_PLMCreateMaterial",
         " { \"x\" : 1 , \"data\" : { \"no\" : \"M-1\\/\\u6750 \\\"\\n\" ,\r\n"
         " \"n\" : [ 1 , -2.5 , true , null , { } , [ ] ] , \"no\" : \"\" } } ");
  PickAnswering({IDCANCEL, IDOK});
  EXPECT_EQ(Asked().at(1),
            "QD_PLMMaterialBackFill {\"backfill_info_from_create_material\":"
            R"({"no":"M-1/材 \"\n","n":[1,-2.5,true,null,{},[]],"no":""}})");
}

TEST_F(CreateMaterial, FillsBackIntoTheDocumentThatIsThenActive) {
  const auto part = OpenPartWithThree();
  const auto other = Open(L"other.sldprt", {{.name = L"A", .text = L"1"}});
  m_host->Activate(part);
  Answer("QD_PLMCreateMaterial", kCreated);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x"}})");
  m_boxes->WhileUp([&] { m_host->Activate(other); });
  PickAnswering({IDOK, IDOK, IDOK});
  EXPECT_SAME_ENTRIES(PropertiesOf(*part), Texts{L"A=1", L"B=2", L"C=3"});
  EXPECT_EQ(PropertiesOf(*other), Texts{L"A=x"});
}

}  // namespace
