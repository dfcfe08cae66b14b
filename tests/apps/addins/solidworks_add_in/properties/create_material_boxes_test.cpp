// The message boxes of PlmCreateMaterial: the effect of each answer, and what is done before each box is
// shown.
#include <gtest/gtest.h>

#include "list_difference.h"
#include "log_line.h"
#include "properties_fixture.h"

namespace {

constexpr int kClose = MessageBoxRecorder::kClose;

class CreateMaterialBoxes : public PropertiesFixture {
 protected:
  void SetUp() override {
    Answer("QD_PLMCreateMaterial", R"({"data":{"no":"M-1"}})");
    Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"B":"y"}})");
    ConnectAndLogIn();
    m_document = OpenPartWithThree();
  }

  void PickAnswering(std::initializer_list<int> answers, HRESULT code = S_OK) {
    for (const int answer : answers) m_boxes->Expect(answer);
    const auto picked = Pick(L"PlmCreateMaterial");
    EXPECT_EQ(FAILED(picked.result) ? picked.code : picked.result, code);
  }

  const std::string kExtracted = R"(QD_PLMCreateMaterial {"extract_info":{"A":"1","B":"2","C":"3"}})";
  const std::string kNothing = "QD_PLMCreateMaterial ";
  const std::string kBackFill =
      R"(QD_PLMMaterialBackFill {"backfill_info_from_create_material":{"no":"M-1"}})";
  const Texts kUnchanged = {L"A=1", L"B=2", L"C=3"};
  const Texts kFilled = {L"A=1", L"B=y", L"C=3"};
  const std::wstring kWrote = ErrorLine(1308, L"PlmCreateMaterial", L"AttributesBackFill failed", S_OK);
  std::shared_ptr<cad_host::Document> m_document;
};

TEST_F(CreateMaterialBoxes, AnsweredWithOkSendTheValuesAndFillBack) {
  PickAnswering({IDOK, IDOK, IDOK});
  EXPECT_SAME_ENTRIES(Boxes(), Texts{L"extract?", L"backfill?", L"completed"})
      << "no error message for the logged code S_OK";
  EXPECT_EQ(Asked(), (Requests{kExtracted, kBackFill}));
  EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), kFilled);
  EXPECT_EQ(m_home.LogLines(), Texts{kWrote});
}

TEST_F(CreateMaterialBoxes, SendNoValuesButFillBackIfExtractingIsDeclined) {
  for (const int no : {IDCANCEL, kClose}) {
    m_home.Reset();
    m_document->model.properties[1].text = L"2";
    PickAnswering({no, IDOK, IDOK});
    EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), kFilled);
    EXPECT_EQ(m_home.LogLines(), Texts{kWrote});
  }
  EXPECT_SAME_ENTRIES(Asked(), Requests{kNothing, kBackFill, kNothing, kBackFill});
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::OpenDoc6").size(), 0u) << "nothing is read";
  EXPECT_EQ(m_host->GetJournal().Calls(L"ICustomPropertyManager::Get3").size(), 0u);
}

TEST_F(CreateMaterialBoxes, EndTheCommandIfFillingBackIsDeclined) {
  for (const int no : {IDCANCEL, kClose}) PickAnswering({IDOK, no});
  EXPECT_SAME_ENTRIES(Boxes(), Texts{L"extract?", L"backfill?", L"extract?", L"backfill?"});
  EXPECT_EQ(Asked(), (Requests{kExtracted, kExtracted}));
  EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), kUnchanged);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(CreateMaterialBoxes, OnlyCreateIfBothAreDeclined) {
  PickAnswering({kClose, IDCANCEL});
  EXPECT_EQ(Asked(), Requests{kNothing});
  EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), kUnchanged);
}

TEST_F(CreateMaterialBoxes, AreShownBeforeTheStepsThatTheyAskFor) {
  std::vector<std::size_t> asked;
  std::vector<Texts> properties;
  m_boxes->WhileUp([&] {
    asked.push_back(Asked().size());
    properties.push_back(PropertiesOf(*m_document));
  });
  PickAnswering({IDOK, IDOK, IDOK});
  EXPECT_EQ(asked, (std::vector<std::size_t>{0, 1, 2}));
  EXPECT_EQ(properties, (std::vector<Texts>{kUnchanged, kUnchanged, kFilled}));
}

TEST_F(CreateMaterialBoxes, AreShownBeforeTheWriteIsLogged) {
  std::vector<std::size_t> lines;
  m_boxes->WhileUp([&] { lines.push_back(AddInLog().size()); });
  PickAnswering({IDOK, IDOK, IDOK});
  EXPECT_EQ(lines, (std::vector<std::size_t>{0, 0, 0}));
  EXPECT_EQ(AddInLog().size(), 1u);
}

TEST_F(CreateMaterialBoxes, ShowAFailedWriteAfterItIsLogged) {
  m_host->GetFaults().Fail(L"ICustomPropertyManager::Set", 1, E_ACCESSDENIED);
  std::vector<std::size_t> lines;
  m_boxes->WhileUp([&] { lines.push_back(AddInLog().size()); });
  PickAnswering({IDOK, IDOK, IDOK}, E_ACCESSDENIED);
  EXPECT_SAME_ENTRIES(Boxes(), Texts{L"extract?", L"backfill?", L"error 0x80070005"});
  EXPECT_EQ(AddInLog(),
            (Texts{ErrorLine(1214, L"PutAttributes", L"pCustomPropertyManager->Set", E_ACCESSDENIED),
                   ErrorLine(1308, L"PlmCreateMaterial", L"AttributesBackFill failed", E_ACCESSDENIED)}));
  EXPECT_EQ(lines, (std::vector<std::size_t>{0, 0, 2}));
  EXPECT_SAME_ENTRIES(PropertiesOf(*m_document), kUnchanged);
}

TEST_F(CreateMaterialBoxes, NameTheCodeAndTheLogFolderInTheErrorMessage) {
  m_host->GetFaults().Fail(L"ICustomPropertyManager::Set", 1, E_ACCESSDENIED);
  PickAnswering({IDCANCEL, IDOK, IDOK}, E_ACCESSDENIED);
  const RecordedMessageBox& box = m_boxes->Boxes().back();
  EXPECT_TRUE(box.text.ends_with(L"\n\nError code: 0x80070005\nLog folder: " + m_home.Folder().Path(L"log")))
      << Utf8(box.text);
  EXPECT_EQ(box.caption, L"Collaborative management");
  EXPECT_EQ(box.icon, static_cast<UINT>(MB_ICONERROR));
}

}  // namespace
