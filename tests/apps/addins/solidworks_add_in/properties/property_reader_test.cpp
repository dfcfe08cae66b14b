// The two readers of custom properties: GetAttributes reads the raw texts of the active document,
// GetCustomProperty the resolved values of a document that the caller passes.
#include <gtest/gtest.h>

#include "list_difference.h"
#include "log_line.h"
#include "property_access_fixture.h"
#include "raised_by.h"

namespace {

constexpr const wchar_t* kGetAll = L"ICustomPropertyManager::GetAll";
constexpr const wchar_t* kGetNames = L"ICustomPropertyManager::GetNames";
constexpr const wchar_t* kGet2 = L"ICustomPropertyManager::Get2";
constexpr const wchar_t* kGet3 = L"ICustomPropertyManager::Get3";

/// The position of the count in the results of GetAll.
constexpr std::size_t kCount = 3;

class PropertyReader : public PropertyAccessFixture {
 protected:
  /// Opens a part with properties of every type. W is an expression; a configuration has properties of its
  /// own.
  std::shared_ptr<cad_host::Document> OpenPartOfAllTypes() {
    cad_host::ModelFile model;
    model.properties = {{.name = L"T", .text = L"text"},
                        {.name = L"W", .text = L"\"SW-Mass@part.sldprt\" kg"},
                        {.name = L"N", .text = L"12", .type = swCustomInfoNumber},
                        {.name = L"D", .text = L"2024-05-31", .type = swCustomInfoDate},
                        {.name = L"Y", .text = L"Yes", .type = swCustomInfoYesOrNo}};
    model.quantities = {{L"SW-Mass", L"1.25"}};
    model.configurations[L"Default"] = {{.name = L"only here", .text = L"x"}, {.name = L"T", .text = L"y"}};
    auto document = m_host->Open(MakeModel(L"part.sldprt", model));
    document->configuration = L"Default";
    m_host->GetJournal().Clear();
    return document;
  }

  std::wstring ReadActive(HRESULT expected = S_OK) {
    const auto json = Json();
    EXPECT_EQ(m_class->GetAttributes(json), expected);
    return json->ToJson();
  }

  std::wstring ReadGiven(HRESULT expected = S_OK) {
    const auto json = Json();
    const IModelDoc2Ptr document = ActiveModel();
    EXPECT_EQ(m_class->GetCustomProperty(document, json), expected);
    return json->ToJson();
  }
};

TEST_F(PropertyReader, OfTheActiveDocumentReturnsTextsAsTyped) {
  OpenPartOfAllTypes();
  EXPECT_EQ(ReadActive(),
            LR"({"T":"text","W":"\"SW-Mass@part.sldprt\" kg","N":"12","D":"2024-05-31","Y":"Yes"})");
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, OfTheActiveDocumentMakesOneCallForAllNamesAndOneForEachName) {
  OpenPartWithThree();
  ReadActive();
  EXPECT_SAME_ENTRIES(HostCalls(), Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::get_Extension()",
                                         L"IModelDocExtension::get_CustomPropertyManager(\"\")",
                                         std::wstring(kGetAll) + L"()", std::wstring(kGet2) + L"(\"A\")",
                                         std::wstring(kGet2) + L"(\"B\")", std::wstring(kGet2) + L"(\"C\")"});
}

TEST_F(PropertyReader, OfAGivenDocumentReturnsResolvedValues) {
  OpenPartOfAllTypes();
  EXPECT_EQ(ReadGiven(), LR"({"T":"text","W":"1.25 kg","N":"12","D":"2024-05-31","Y":"Yes"})");
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, OfAGivenDocumentReadsCachedValuesOfTheDocumentLevel) {
  OpenPartWithThree();
  ReadGiven();
  EXPECT_SAME_ENTRIES(
      HostCalls(),
      Texts{L"IModelDoc2::get_Extension()", L"IModelDocExtension::get_CustomPropertyManager(\"\")",
            std::wstring(kGetNames) + L"()", std::wstring(kGet3) + L"(\"A\", true)",
            std::wstring(kGet3) + L"(\"B\", true)", std::wstring(kGet3) + L"(\"C\", true)"});
}

TEST_F(PropertyReader, OfAGivenDocumentReadsItEvenIfAnotherIsActive) {
  OpenPartWithThree();
  const IModelDoc2Ptr document = ActiveModel();
  Open(L"other.sldprt", {{.name = L"Other", .text = L"x"}});
  const auto json = Json();
  EXPECT_EQ(m_class->GetCustomProperty(document, json), S_OK);
  EXPECT_EQ(json->ToJson(), LR"({"A":"1","B":"2","C":"3"})");
  EXPECT_EQ(ReadActive(), LR"({"Other":"x"})");
}

TEST_F(PropertyReader, ReadsDrawingsAndAssembliesAlike) {
  for (const wchar_t* name : {L"a.sldasm", L"a.slddrw"}) {
    Open(name, {{.name = L"A", .text = L"1"}});
    EXPECT_EQ(ReadActive(), LR"({"A":"1"})");
    EXPECT_EQ(ReadGiven(), LR"({"A":"1"})");
  }
}

TEST_F(PropertyReader, ReturnsNothingWithoutADocument) {
  EXPECT_EQ(ReadActive(), L"{}");
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, ThrowsInvalidPointerForANullDocument) {
  EXPECT_EQ(RaisedBy([&] { m_class->GetCustomProperty(IModelDoc2Ptr(), Json()); }), E_POINTER);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, ReturnsNothingForADocumentWithoutProperties) {
  Open(L"part.sldprt", {});
  EXPECT_EQ(ReadActive(), L"{}");
  EXPECT_EQ(ReadGiven(), L"{}");
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, KeepsOtherMembersAndReplacesMembersOfTheSameName) {
  OpenPartWithThree();
  const auto json = Json(LR"({"kept":7,"B":"before","b":"other"})");
  EXPECT_EQ(m_class->GetAttributes(json), S_OK);
  EXPECT_EQ(json->ToJson(), LR"({"kept":7,"B":"2","b":"other","A":"1","C":"3"})");
  json->SetStringValue(L"C", L"again");
  EXPECT_EQ(m_class->GetCustomProperty(ActiveModel(), json), S_OK);
  EXPECT_EQ(json->ToJson(), LR"({"kept":7,"B":"2","b":"other","A":"1","C":"3"})");
}

TEST_F(PropertyReader, OfTheActiveDocumentStopsAtTheFirstPropertyThatFails) {
  OpenPartWithThree();
  const Texts read = {LR"({})", LR"({"A":"1"})", LR"({"A":"1","B":"2"})"};
  for (int nth = 1; nth <= 3; ++nth) {
    m_home.Reset();
    m_host->GetJournal().Clear();
    m_host->GetFaults().Fail(kGet2, nth, E_ACCESSDENIED);
    EXPECT_EQ(ReadActive(E_ACCESSDENIED), read[static_cast<std::size_t>(nth - 1)]);
    EXPECT_EQ(AddInLog(),
              Texts{ErrorLine(1170, L"GetAttributes", L"pCustomPropertyManager->Get2", E_ACCESSDENIED)});
    EXPECT_EQ(m_host->GetJournal().Calls(kGet2).size(), static_cast<std::size_t>(nth));
    m_host->GetFaults().Clear();
  }
}

TEST_F(PropertyReader, OfAGivenDocumentSkipsWhatFailsAndReturnsTheLastResult) {
  OpenPartWithThree();
  const Texts read = {LR"({"B":"2","C":"3"})", LR"({"A":"1","C":"3"})", LR"({"A":"1","B":"2"})"};
  const Texts names = {L"A", L"B", L"C"};
  for (std::size_t failing = 0; failing < 3; ++failing) {
    m_home.Reset();
    m_host->GetFaults().Fail(kGet3, static_cast<int>(failing) + 1, E_ACCESSDENIED);
    EXPECT_EQ(ReadGiven(failing == 2 ? E_ACCESSDENIED : S_OK), read[failing]);
    EXPECT_EQ(AddInLog(), Texts{ErrorLine(1489, L"GetCustomProperty", L"pCustomMgr->Get3: " + names[failing],
                                          E_ACCESSDENIED)});
    m_host->GetFaults().Clear();
  }
}

TEST_F(PropertyReader, OfAGivenDocumentLogsEachPropertyThatFails) {
  Open(L"part.sldprt", {{.name = L"材料", .text = L"1"}, {.name = L"a b", .text = L"2"}});
  m_host->GetFaults().Fail(kGet3, cad_host::Faults::kEvery, E_FAIL);
  EXPECT_EQ(ReadGiven(E_FAIL), L"{}");
  EXPECT_EQ(AddInLog(), (Texts{ErrorLine(1489, L"GetCustomProperty", L"pCustomMgr->Get3: 材料", E_FAIL),
                               ErrorLine(1489, L"GetCustomProperty", L"pCustomMgr->Get3: a b", E_FAIL)}));
}

TEST_F(PropertyReader, AcceptsASuccessCodeOtherThanOk) {
  OpenPartWithThree();
  m_host->GetFaults().ReturnFalse(kGet2, 2);
  EXPECT_EQ(ReadActive(), LR"({"A":"1","B":"","C":"3"})");
  m_host->GetFaults().ReturnFalse(kGet3, 3);
  EXPECT_EQ(ReadGiven(S_FALSE), LR"({"A":"1","B":"2","C":""})");
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, OfTheActiveDocumentReadsNoMoreThanTheArrayHas) {
  OpenPartWithThree();
  m_host->GetFaults().ChangeResults(kGetAll, 1,
                                    [](const auto& results) { *static_cast<long*>(results[kCount]) = 1000; });
  EXPECT_EQ(ReadActive(), LR"({"A":"1","B":"2","C":"3"})");
}

TEST_F(PropertyReader, OfTheActiveDocumentReadsNoMoreThanTheCount) {
  OpenPartWithThree();
  for (const auto& [count, read] : {std::pair(2L, LR"({"A":"1","B":"2"})"), {0L, L"{}"}, {-1L, L"{}"}}) {
    m_host->GetFaults().Clear();
    m_host->GetFaults().ChangeResults(kGetAll, 1, [counted = count](const auto& results) {
      *static_cast<long*>(results[kCount]) = counted;
    });
    EXPECT_EQ(ReadActive(), read);
  }
}

TEST_F(PropertyReader, OfTheActiveDocumentReturnsNothingIfTheNamesAreNotAnArrayOfTexts) {
  OpenPartWithThree();
  for (const VARTYPE type :
       std::initializer_list<VARTYPE>{VT_EMPTY, VT_NULL, VT_I4, VT_ARRAY | VT_I4, VT_ARRAY | VT_VARIANT}) {
    m_host->GetFaults().Clear();
    m_host->GetFaults().ChangeResults(kGetAll, 1, NamesOfType(type));
    EXPECT_EQ(ReadActive(), L"{}") << type;
  }
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, OfAGivenDocumentFailsIfTheNamesAreNotAnArrayOfTexts) {
  OpenPartWithThree();
  for (const VARTYPE type : std::initializer_list<VARTYPE>{VT_I4, VT_ARRAY | VT_I4, VT_ARRAY | VT_VARIANT}) {
    m_home.Reset();
    m_host->GetFaults().Clear();
    m_host->GetFaults().ChangeResults(kGetNames, 1, NamesOfType(type));
    EXPECT_EQ(ReadGiven(DISP_E_TYPEMISMATCH), L"{}") << type;
    EXPECT_EQ(AddInLog(), Texts{ErrorLine(1479, L"GetCustomProperty",
                                          L"CSolidWorksFileAnalyser::Var2StringList", DISP_E_TYPEMISMATCH)});
  }
}

TEST_F(PropertyReader, OfAGivenDocumentReturnsNothingIfThereAreNoNames) {
  OpenPartWithThree();
  for (const VARTYPE type : {VT_EMPTY, VT_NULL}) {
    m_host->GetFaults().Clear();
    m_host->GetFaults().ChangeResults(kGetNames, 1, NamesOfType(type));
    EXPECT_EQ(ReadGiven(), L"{}") << type;
  }
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyReader, PassesAnEmptyNameForTheDocumentLevelNotNull) {
  const auto manager_calls = [this] {
    Texts arguments;
    for (const auto& call : m_host->GetJournal().Calls(L"IModelDocExtension::get_CustomPropertyManager")) {
      arguments.push_back(call.arguments);
    }
    return arguments;
  };
  OpenPartWithThree();
  ReadActive();
  EXPECT_EQ(manager_calls(), Texts{L"\"\""});
  ReadGiven();  // clears the journal first
  EXPECT_EQ(manager_calls(), Texts{L"\"\""});
}

}  // namespace
