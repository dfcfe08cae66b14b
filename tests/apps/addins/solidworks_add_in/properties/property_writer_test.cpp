// Writing values to the properties that the active document has.
#include <gtest/gtest.h>

#include "case_name.h"
#include "list_difference.h"
#include "log_line.h"
#include "property_access_fixture.h"

namespace {

constexpr const wchar_t* kSet = L"ICustomPropertyManager::Set";

class PropertyWriter : public PropertyAccessFixture {
 protected:
  /// Writes the members of the JSON text; expects success and the message box that follows.
  void Write(const std::wstring& text) {
    ExpectBoxes(1);
    EXPECT_EQ(m_class->PutAttributes(Json(text)), S_OK);
  }
};

TEST_F(PropertyWriter, WritesEachPropertyThatTheObjectNamesAndShowsSuccess) {
  const auto document = OpenPartWithThree();
  Write(LR"({"C":"z","A":"x","B":"y"})");
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=x", L"B=y", L"C=z"});
  EXPECT_EQ(Boxes(), Texts{L"completed"});
  EXPECT_SAME_ENTRIES(HostCalls(),
                      Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::get_Extension()",
                            L"IModelDocExtension::get_CustomPropertyManager(\"\")",
                            L"ICustomPropertyManager::GetAll()", std::wstring(kSet) + L"(\"A\", \"x\")",
                            std::wstring(kSet) + L"(\"B\", \"y\")", std::wstring(kSet) + L"(\"C\", \"z\")"})
      << "neither saved nor rebuilt";
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyWriter, ShowsSuccessAfterTheLastPropertyWasWritten) {
  const auto document = OpenPartWithThree();
  Texts seen;
  m_boxes->WhileUp([&] { seen = PropertiesOf(*document); });
  Write(LR"({"A":"x","B":"y","C":"z"})");
  EXPECT_SAME_ENTRIES(seen, Texts{L"A=x", L"B=y", L"C=z"});
}

TEST_F(PropertyWriter, DoesNotChangeTheFile) {
  const auto document = OpenPartWithThree();
  const std::string before = m_folder.Read(L"part.sldprt");
  Write(LR"({"A":"x"})");
  EXPECT_TRUE(document->changed);
  EXPECT_EQ(m_folder.Read(L"part.sldprt"), before);
}

/// An object that is written to a part with A=1, B=2 and C=3, and the properties afterwards.
struct Written {
  const char* name;
  const wchar_t* json;
  Texts properties;
};

class PropertyValue : public PropertyWriter, public testing::WithParamInterface<Written> {};

TEST_P(PropertyValue, IsTakenFromTheMemberOfThatName) {
  const auto document = OpenPartWithThree();
  Write(GetParam().json);
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), GetParam().properties);
  EXPECT_EQ(Boxes(), Texts{L"completed"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

const Written kWritten[] = {
    {"NoMember", L"{}", {L"A=1", L"B=2", L"C=3"}},
    {"OtherNames", LR"({"D":"new","a":"other case","b":"x"," C":"y"})", {L"A=1", L"B=2", L"C=3"}},
    {"OneMember", LR"({"B":"x"})", {L"A=1", L"B=x", L"C=3"}},
    {"EmptyText", LR"({"B":""})", {L"A=1", L"B=", L"C=3"}},
    {"TwoMembersOfOneName", LR"({"B":"first","B":"second"})", {L"A=1", L"B=first", L"C=3"}},
    // A value that is not a string is written as its JSON text, null as the empty text.
    {"NumberNullAndObject", LR"({"A":7,"B":null,"C":{"text":"x"}})", {L"A=7", L"B=", LR"(C={"text":"x"})"}},
    {"TrueArrayAndFraction", LR"({"A":true,"B":["x"],"C":1.5})", {L"A=true", LR"(B=["x"])", L"C=1.5"}},
    {"EscapedCharacters",
     LR"({"A":"\"quoted\" \\ /","B":"line\r\nnext\ttab","C":"钢 😀"})",
     {L"A=\"quoted\" \\ /", L"B=line\r\nnext\ttab", L"C=钢 😀"}},
    {"NullCharacter", L"{\"A\":\"a\\u0000b\"}", {std::wstring(L"A=a\0b", 5), L"B=2", L"C=3"}},
};

INSTANTIATE_TEST_SUITE_P(, PropertyValue, testing::ValuesIn(kWritten), CaseName<Written>);

TEST_F(PropertyWriter, WritesPropertiesWithNamesInAnyScript) {
  const auto document = Open(L"part.sldprt", {{.name = L"材料 \"😀\"\\", .text = L"1"}});
  Write(LR"({"材料 \"😀\"\\":"钢"})");
  EXPECT_EQ(PropertiesOf(*document), Texts{L"材料 \"😀\"\\=钢"});
}

TEST_F(PropertyWriter, DoesNotChangePropertiesOfConfigurations) {
  const auto document = OpenPartWithThree();
  document->model.configurations[L"Default"] = {{.name = L"A", .text = L"own"}, {.name = L"X", .text = L"x"}};
  document->configuration = L"Default";
  Write(LR"({"A":"new","X":"new"})");
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=new", L"B=2", L"C=3"});
  EXPECT_EQ(document->model.configurations[L"Default"][0].text, L"own");
  EXPECT_EQ(document->model.configurations[L"Default"][1].text, L"x");
}

TEST_F(PropertyWriter, ShowsSuccessEvenIfTheDocumentHasNoProperties) {
  const auto document = Open(L"part.sldprt", {});
  Write(LR"({"A":"x"})");
  EXPECT_EQ(PropertiesOf(*document), Texts{});
  EXPECT_EQ(Boxes(), Texts{L"completed"});
}

TEST_F(PropertyWriter, DoesNothingWithoutADocument) {
  EXPECT_EQ(m_class->PutAttributes(Json(LR"({"A":"x"})")), S_OK);
  EXPECT_EQ(Boxes(), Texts{});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyWriter, StopsAtTheFirstPropertyThatFails) {
  for (int nth = 1; nth <= 3; ++nth) {
    m_home.Reset();
    const auto document = OpenPartWithThree();
    m_host->GetFaults().Fail(kSet, nth, E_ACCESSDENIED);
    EXPECT_EQ(m_class->PutAttributes(Json(LR"({"A":"x","B":"y","C":"z"})")), E_ACCESSDENIED);
    EXPECT_SAME_ENTRIES(PropertiesOf(*document),
                        Texts{nth > 1 ? L"A=x" : L"A=1", nth > 2 ? L"B=y" : L"B=2", L"C=3"});
    EXPECT_EQ(AddInLog(),
              Texts{ErrorLine(1214, L"PutAttributes", L"pCustomPropertyManager->Set", E_ACCESSDENIED)});
    EXPECT_EQ(m_host->GetJournal().Calls(kSet).size(), static_cast<std::size_t>(nth));
    m_host->GetFaults().Clear();
    m_host->Close(document);
  }
  EXPECT_EQ(Boxes(), Texts{});
}

TEST_F(PropertyWriter, FailsForAReadOnlyDocument) {
  const auto document = OpenPartWithThree();
  document->read_only = true;
  EXPECT_EQ(m_class->PutAttributes(Json(LR"({"A":"x","B":"y"})")), E_ACCESSDENIED);
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=1", L"B=2", L"C=3"});
  EXPECT_EQ(AddInLog(),
            Texts{ErrorLine(1214, L"PutAttributes", L"pCustomPropertyManager->Set", E_ACCESSDENIED)});
  EXPECT_EQ(Boxes(), Texts{});
}

// The host reports this in a number that the add-in ignores.
TEST_F(PropertyWriter, SucceedsEvenIfTheHostRejectsAValue) {
  const auto document = Open(L"part.sldprt", {{L"Count", L"12", swCustomInfoNumber}});
  Write(LR"({"Count":"a dozen"})");
  EXPECT_EQ(PropertiesOf(*document), Texts{L"Count=12"});
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyWriter, WritesNoMoreThanTheArrayAndTheCountHave) {
  for (const long count : {1000L, 2L, 0L, -1L}) {
    const auto document = OpenPartWithThree();
    m_host->GetFaults().Clear();
    m_host->GetFaults().ChangeResults(L"ICustomPropertyManager::GetAll", 1, [count](const auto& results) {
      *static_cast<long*>(results[3]) = count;
    });
    Write(LR"({"A":"x","B":"y","C":"z"})");
    EXPECT_SAME_ENTRIES(
        PropertiesOf(*document),
        Texts{count > 0 ? L"A=x" : L"A=1", count > 1 ? L"B=y" : L"B=2", count > 2 ? L"C=z" : L"C=3"});
    m_host->Close(document);
  }
}

TEST_F(PropertyWriter, WritesNothingAndShowsSuccessIfTheNamesAreNotAnArrayOfTexts) {
  const auto document = OpenPartWithThree();
  for (const VARTYPE type :
       std::initializer_list<VARTYPE>{VT_EMPTY, VT_NULL, VT_I4, VT_ARRAY | VT_I4, VT_ARRAY | VT_VARIANT}) {
    m_host->GetFaults().Clear();
    m_host->GetFaults().ChangeResults(L"ICustomPropertyManager::GetAll", 1, NamesOfType(type));
    Write(LR"({"A":"x","B":"y","C":"z"})");
  }
  EXPECT_SAME_ENTRIES(PropertiesOf(*document), Texts{L"A=1", L"B=2", L"C=3"});
  EXPECT_SAME_ENTRIES(Boxes(), Texts(5, L"completed"));
  EXPECT_EQ(m_host->GetJournal().Calls(kSet).size(), 0u);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(PropertyWriter, DoesNotChangeTheObject) {
  OpenPartWithThree();
  const auto json = Json(LR"({"A":"x","D":7})");
  ExpectBoxes(1);
  EXPECT_EQ(m_class->PutAttributes(json), S_OK);
  EXPECT_EQ(json->ToJson(), LR"({"A":"x","D":7})");
}

}  // namespace
