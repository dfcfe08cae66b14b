// PlmMaterialBackFill, which fills the active document's properties from a material of the PLM system.
#include <gtest/gtest.h>

#include "list_difference.h"
#include "log_line.h"
#include "properties_fixture.h"
#include "result_codes.h"

namespace {

class MaterialBackFill : public PropertiesFixture {
 protected:
  void SetUp() override { ConnectAndLogIn(); }

  /// Picks the command, closes so many boxes with OK, and expects the code.
  void PickExpecting(std::size_t boxes, HRESULT code = S_OK) {
    ExpectBoxes(boxes);
    const auto picked = Pick(L"PlmMaterialBackFill");
    EXPECT_EQ(FAILED(picked.result) ? picked.code : picked.result, code);
  }

  const std::string kRequest = std::string("QD_PLMMaterialBackFill ") + kLoginAnswer;
  const Texts kUnchanged = {L"A=1", L"B=2", L"C=3"};
};

TEST_F(MaterialBackFill, SendsTheLoginAndWritesTheValuesOfTheAnswer) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x","C":"","Z":"new"},"B":"no"})");
  PickExpecting(1);
  EXPECT_EQ(Asked(), Requests{kRequest});
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=x", L"B=2", L"C="});
  EXPECT_EQ(Boxes(), Texts{L"completed"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(MaterialBackFill, ShowsThatNoModelIsLoaded) {
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{}})");
  PickExpecting(1);
  m_host->New(swDocPART);
  PickExpecting(1);
  OpenPartWithThree()->path = m_folder.Path(L"gone.sldprt");
  PickExpecting(1);
  EXPECT_EQ(Boxes(), Texts(3, L"no model"));
  EXPECT_EQ(Asked(), Requests{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(MaterialBackFill, AllowsItsMessagesToBeClosed) {
  m_boxes->Expect(MessageBoxRecorder::kClose);
  PickExpecting(0);
  OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{}})");
  m_boxes->Expect(MessageBoxRecorder::kClose);
  PickExpecting(0);
  EXPECT_EQ(Boxes(), (Texts{L"no model", L"completed"}));
}

TEST_F(MaterialBackFill, ShowsSuccessEvenIfTheAnswerNamesNoProperty) {
  const auto document = OpenPartWithThree();
  for (const char* values : {"{}", R"({"Z":"new"})", R"({"a":"x"})"}) {
    Answer("QD_PLMMaterialBackFill", std::string(R"({"material_property_back_fill":)") + values + "}");
    PickExpecting(1);
  }
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), kUnchanged);
  EXPECT_EQ(Boxes(), Texts(3, L"completed"));
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(MaterialBackFill, DoesNothingIfTheAnswerHasNoProperties) {
  const auto document = OpenPartWithThree();
  for (const char* answer :
       {"{}", "", "{ }", "{", "[]", "null", R"({"A":"x"})", R"({"material_property_back_fill ":{"A":"x"}})",
        R"({"material_property_back_fill":{"A":"x"})", R"({"__InvokeResult__":false})"}) {
    Answer("QD_PLMMaterialBackFill", answer);
    PickExpecting(0);
  }
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), kUnchanged);
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 4u) << "the answers that are not JSON objects";
}

TEST_F(MaterialBackFill, ThrowsThePlatformExceptionIfThePropertiesAreNotAnObject) {
  const auto document = OpenPartWithThree();
  for (const char* values : {"[]", "null", "\"A\"", "true", "1"}) {
    m_home.Reset();
    m_home.WriteConfiguration(L"PlmClient.json", "{}");  // Reset deleted it; the pipe is open already
    Answer("QD_PLMMaterialBackFill", std::string(R"({"material_property_back_fill":)") + values + "}");
    const auto picked = Pick(L"PlmMaterialBackFill");
    EXPECT_EQ(picked.result, DISP_E_EXCEPTION) << values;
    EXPECT_EQ(picked.code, hr::kJsonWrongType) << values;
    EXPECT_EQ(picked.description, L"json member [material_property_back_fill] is not Object!") << values;
    EXPECT_EQ(AddInLog(), Texts{});
    EXPECT_EQ(PlatformLog().size(), 1u) << values;
  }
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), kUnchanged);
}

TEST_F(MaterialBackFill, LogsAndThenShowsAFailedWrite) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x","B":"y","C":"z"}})");
  m_host->GetFaults().Fail(L"ICustomPropertyManager::Set", 2, E_ACCESSDENIED);
  std::size_t lines = 0;
  m_boxes->WhileUp([&] { lines = AddInLog().size(); });
  PickExpecting(1, E_ACCESSDENIED);
  EXPECT_EQ(Boxes(), Texts{L"error 0x80070005"});
  EXPECT_EQ(AddInLog(),
            (Texts{ErrorLine(1214, L"PutAttributes", L"pCustomPropertyManager->Set", E_ACCESSDENIED),
                   ErrorLine(1417, L"PlmMaterialBackFill", L"AttributesBackFill failed.", E_ACCESSDENIED)}));
  EXPECT_EQ(lines, 2u);
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=x", L"B=2", L"C=3"});
}

TEST_F(MaterialBackFill, AllowsTheErrorMessageToBeClosed) {
  OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x"}})");
  m_host->GetFaults().Fail(L"ICustomPropertyManager::Set", 1, E_FAIL);
  m_boxes->Expect(MessageBoxRecorder::kClose);
  PickExpecting(0, E_FAIL);
  EXPECT_EQ(Boxes(), Texts{L"error 0x80004005"});
}

TEST_F(MaterialBackFill, ShowsThatAReadOnlyDocumentCannotBeFilled) {
  const std::wstring path = OpenPartWithThree()->path;
  m_host->Close(m_host->ActiveDocument());
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  const auto document = m_host->Open(path);
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x"}})");
  PickExpecting(1, E_ACCESSDENIED);
  EXPECT_EQ(Boxes(), Texts{L"error 0x80070005"});
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), kUnchanged);
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(MaterialBackFill, LogsNothingOnSuccess) {
  OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"x"}})");
  m_host->GetFaults().ReturnFalse(L"ICustomPropertyManager::Set", 1);
  PickExpecting(1);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(MaterialBackFill, DoesNotSaveTheDocument) {
  const auto document = OpenPartWithThree();
  Answer("QD_PLMMaterialBackFill", R"({"material_property_back_fill":{"A":"钢 \"😀\""}})");
  PickExpecting(1);
  EXPECT_EQ(cad_host::ReadModelFile(document->path).properties[0].text, L"1");
  m_host->Save(*document);
  EXPECT_EQ(cad_host::ReadModelFile(document->path).properties[0].text, L"钢 \"😀\"");
}

}  // namespace
