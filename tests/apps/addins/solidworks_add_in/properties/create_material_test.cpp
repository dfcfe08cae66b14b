// PlmCreateMaterial: from which document it reads, and what it makes of the PLM client's answers.
#include <gtest/gtest.h>

#include "properties_fixture.h"

namespace {

constexpr const char* kCreated = R"({"data":{"no":"M-1"}})";

class CreateMaterial : public PropertiesTest {
 protected:
  void SetUp() override { ConnectAndLogIn(); }

  void PickAnswering(std::initializer_list<int> answers) {
    for (const int answer : answers) m_boxes->Expect(answer);
    EXPECT_EQ(Pick(L"PlmCreateMaterial").result, S_OK);
  }

  /// The arguments with which the host was asked for the document.
  Texts OpenedWith() const {
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

TEST_F(CreateMaterial, SendsAnEmptyRequestForADocumentThatWasNeverSaved) {
  Answer("QD_PLMCreateMaterial", kCreated);
  m_host->New(swDocPART);
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
}

TEST_F(CreateMaterial, SendsAnEmptyRequestForADocumentWhoseFileIsGone) {
  OpenPartWithThree()->path = m_folder.Path(L"gone.sldprt");
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
}

TEST_F(CreateMaterial, SendsAnEmptyRequestForADocumentThatIsOnlyViewed) {
  OpenPartWithThree()->view_only = true;
  PickAnswering({});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
}

TEST_F(CreateMaterial, SendsAnObjectWithoutMembersForADocumentWithoutProperties) {
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

/// A document's file name, and the type as which the host is asked for it.
struct Extension {
  const wchar_t* name;
  swDocumentTypes_e type;
  int asked;
};

class DocumentExtension : public CreateMaterial, public testing::WithParamInterface<Extension> {};

TEST_P(DocumentExtension, TellsTheTypeToOpen) {
  const Extension& row = GetParam();
  const auto document = m_host->New(row.type);
  document->model.properties = {{.name = L"A", .text = L"1"}};
  // Under a name that the host's own dialogs would not give.
  document->path = m_folder.Write(row.name, "file");
  PickAnswering({IDOK, IDCANCEL});
  EXPECT_EQ(OpenedWith(),
            Texts{L"\"" + document->path + L"\", " + std::to_wstring(row.asked) + L", 1, null"});
  EXPECT_EQ(Asked(), Requests{R"(QD_PLMCreateMaterial {"extract_info":{"A":"1"}})"});
}

const Extension kExtensions[] = {
    {L"bolt.sldprt", swDocPART, 1},
    {L"top.sldasm", swDocASSEMBLY, 2},
    {L"sheet.slddrw", swDocDRAWING, 3},
    {L"Part1.SLDPRT", swDocPART, 1},
    {L"Sheet.SldDrw", swDocDRAWING, 3},
    // Only what follows the last point counts.
    {L"a.sldprt.sldasm", swDocASSEMBLY, 2},
    {L"folder.sldprt\\a.slddrw", swDocDRAWING, 3},
    {L"bolt.sldprt.bak", swDocPART, 0},
    {L"bolt.txt", swDocPART, 0},
    {L"bolt", swDocPART, 0},
    {L"folder.sldprt\\bolt", swDocPART, 0},
    // A version number behind the extension is passed over.
    {L"bolt.sldprt.12", swDocPART, 1},
    {L"Top.SLDASM.1", swDocASSEMBLY, 2},
    {L"bolt.12", swDocPART, 0},
    {L"bolt.sldprt.1.2", swDocPART, 0},
};

INSTANTIATE_TEST_SUITE_P(, DocumentExtension, testing::ValuesIn(kExtensions));

TEST_F(CreateMaterial, AsksAgainForTheTypeOfEachDocument) {
  for (const wchar_t* name : {L"a.txt", L"b.sldasm", L"c.sldprt"}) {
    const auto document = m_host->New(swDocPART);
    document->path = m_folder.Write(name, "file");
    PickAnswering({IDOK, IDCANCEL});
  }
  const Texts opened = OpenedWith();
  ASSERT_EQ(opened.size(), 3u);
  EXPECT_TRUE(opened[0].ends_with(L"a.txt\", 0, 1, null"));
  EXPECT_TRUE(opened[1].ends_with(L"b.sldasm\", 2, 1, null"));
  EXPECT_TRUE(opened[2].ends_with(L"c.sldprt\", 1, 1, null"));
}

TEST_F(CreateMaterial, EndsWhereNothingWasCreated) {
  Answer("QD_PLMCreateMaterial", "{}");
  OpenPartWithThree();
  PickAnswering({IDOK});
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Boxes(), Texts{L"extract?"});
}

TEST_F(CreateMaterial, EndsWhereNothingWasCreatedAlsoWithoutProperties) {
  Answer("QD_PLMCreateMaterial", "{}");
  OpenPartWithThree();
  PickAnswering({IDCANCEL});
  EXPECT_EQ(Asked(), Requests{kEmptyRequest});
  EXPECT_EQ(Boxes(), Texts{L"extract?"});
}

TEST_F(CreateMaterial, FillsBackOnlyWhatTheDocumentHas) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMCreateMaterial", kCreated);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"D":"new","B":"y","a":"x"}})");
  PickAnswering({IDCANCEL, IDOK, IDOK});
  EXPECT_EQ(PropertiesOf(*document), (Texts{L"A=1", L"B=y", L"C=3"}));
}

/// The PLM client is asked while the host's document is still held.
TEST_F(CreateMaterial, HoldsTheDocumentWhileItSends) {
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

/// Answers to creating that name no material: the question is asked, then the command ends in silence.
TEST_F(CreateMaterial, EndsAfterTheQuestionWithoutAMaterial) {
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
  EXPECT_EQ(Asked(), Requests(std::size(answers), kEmptyRequest));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// Answers to filling back without properties: nothing is written, nothing said.
TEST_F(CreateMaterial, EndsWithoutPropertiesToFillBack) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMCreateMaterial", kCreated);
  for (const char* answer :
       {"", "{}", "{", "[]", R"({"A":"x"})", R"({"Material_property_back_fill":{"A":"x"}})",
        R"({"material_property_back_fill":{"A":"x"})"}) {
    Answer("QD_PLMMaterialBackFill", answer);
    PickAnswering({IDCANCEL, IDOK});
  }
  EXPECT_EQ(PropertiesOf(*document), (Texts{L"A=1", L"B=2", L"C=3"}));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(CreateMaterial, RaisesThePlatformsExceptionForAMaterialThatIsNoObject) {
  OpenPartWithThree();
  for (const char* answer : {R"({"data":"M-1"})", R"({"data":null})", R"({"data":[{}]})", R"({"data":7})"}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");  // the connection is there
    Answer("QD_PLMCreateMaterial", answer);
    for (const int button : {IDCANCEL, IDOK}) m_boxes->Expect(button);
    const auto picked = Pick(L"PlmCreateMaterial");
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION) << answer;
    EXPECT_EQ(picked.code, static_cast<HRESULT>(0xA3013001)) << answer;
    EXPECT_EQ(picked.description, L"json member [data] is not Object!") << answer;
    EXPECT_EQ(AddInLog(), Texts{});
    EXPECT_EQ(PlatformLog().size(), 1u) << answer;
  }
  EXPECT_EQ(Asked(), Requests(4, kEmptyRequest));
}

TEST_F(CreateMaterial, RaisesThePlatformsExceptionForPropertiesThatAreNoObject) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMCreateMaterial", kCreated);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":"A"})");
  for (const int button : {IDCANCEL, IDOK}) m_boxes->Expect(button);
  const auto picked = Pick(L"PlmCreateMaterial");
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, static_cast<HRESULT>(0xA3013001));
  EXPECT_EQ(picked.description, L"json member [material_property_back_fill] is not Object!");
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PropertiesOf(*document), (Texts{L"A=1", L"B=2", L"C=3"}));
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

TEST_F(CreateMaterial, FillsBackIntoTheDocumentThatIsActiveThen) {
  const auto part = OpenPartWithThree();
  const auto other = Open(L"other.sldprt", {{.name = L"A", .text = L"1"}});
  m_host->Activate(part);
  Answer("QD_PLMCreateMaterial", kCreated);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x"}})");
  m_boxes->WhileUp([&] { m_host->Activate(other); });
  PickAnswering({IDOK, IDOK, IDOK});
  EXPECT_EQ(PropertiesOf(*part), (Texts{L"A=1", L"B=2", L"C=3"}));
  EXPECT_EQ(PropertiesOf(*other), Texts{L"A=x"});
}

}  // namespace
