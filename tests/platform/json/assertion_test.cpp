// Failed assertions of RapidJSON.
#include "json_test_support.h"

namespace {

void ExpectAssertion(const CZALException& exception, const std::wstring& expression) {
  EXPECT_EQ(exception.GetErrorCode(), kWrongType);
  const std::wstring& message = exception.GetErrorMessage();
  EXPECT_TRUE(message.starts_with(L"json assertion \"" + expression + L"\" failed in "))
      << testing::PrintToString(message);
  EXPECT_NE(message.find(L"rapidjson/document.h, line "), std::wstring::npos)
      << testing::PrintToString(message);
}

TEST(Assertions, NameExpressionHeaderAndLine) {
  ExpectException(kWrongType, L"json assertion \"a == b\" failed in include/rapidjson/document.h, line 1234",
                  [] { RaiseRapidJsonAssertion("a == b", "include/rapidjson/document.h", 1234); });
}

TEST(Assertions, AreRaisedByAnElementThatIsNotAnObject) {
  for (const wchar_t* text :
       {LR"({"Menu":[1]})", LR"({"Menu":[{"a":"x"},[]]})", LR"({"Menu":[null]})", LR"({"Menu":["x"]})"}) {
    const auto json = Parse(text);
    ExpectAssertion(ExceptionOf([&] { json->GetObjectArray(L"Menu"); }), L"IsObject()");
    EXPECT_EQ(json->ToJson(), text) << "the object is unchanged";
  }
}

TEST(Assertions, AreRaisedByACopyOfAValueThatIsNotAnObject) {
  CJsonObject copy;
  copy.SetStringValue(L"a", L"x");
  ExpectAssertion(ExceptionOf([&] { copy.CopyFrom(*Parse(L"[1]")); }), L"IsObject()");
  EXPECT_EQ(copy.ToJson(), LR"({"a":"x"})");
}

TEST(Assertions, AreRaisedByRapidJsonItself) {
  const auto json = Parse(LR"({"a":"x"})");
  const rapidjson::Value& value = (*json->Share())["a"];
  EXPECT_EQ(ExceptionOf([&] { value.GetInt(); }).GetErrorCode(), kWrongType);
  ExpectAssertion(ExceptionOf([&] { value.Size(); }), L"IsArray()");
  ExpectAssertion(ExceptionOf([&] { json->Share()->GetString(); }), L"IsString()");
}

TEST(Assertions, AreRaisedByAnObjectWithoutADocument) {
  const CJsonObject without_document(nullptr, nullptr);
  for (const auto& call : {+[](const CJsonObject& json) { json.GetObjectArray(L"a"); },
                           +[](const CJsonObject& json) { json.GetObjectCopy(L"a"); },
                           +[](const CJsonObject& json) { json.GetObjectShared(L"a"); }}) {
    const CZALException exception = ExceptionOf([&] { call(without_document); });
    EXPECT_EQ(exception.GetErrorCode(), kWrongType);
    EXPECT_TRUE(
        exception.GetErrorMessage().starts_with(L"json assertion \"m_pDocument != nullptr\" failed in "))
        << testing::PrintToString(exception.GetErrorMessage());
    EXPECT_NE(exception.GetErrorMessage().find(L"CJsonObject.h, line "), std::wstring::npos);
  }
}

}  // namespace
