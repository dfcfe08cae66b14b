// Failed assertions of RapidJSON.
#include "json_test_support.h"

namespace {

void ExpectAssertion(const CZALException& exception, const std::wstring& expression) {
  EXPECT_EQ(exception.GetErrorCode(), kWrongType);
  const std::wstring& message = exception.GetErrorMessage();
  EXPECT_TRUE(message.starts_with(L"json assertion \"" + expression + L"\" failed in document.h, line "))
      << testing::PrintToString(message);
}

TEST(Assertions, NameExpressionHeaderAndLine) {
  ExpectException(kWrongType, L"json assertion \"a == b\" failed in document.h, line 1234", [] {
    RaiseRapidJsonAssertion("a == b", "/home/x/rapidjson/include/rapidjson/document.h", 1234);
  });
  ExpectException(kWrongType, L"json assertion \"a == b\" failed in internal/stack.h, line 5",
                  [] { RaiseRapidJsonAssertion("a == b", "rapidjson/internal/stack.h", 5); });
  ExpectException(kWrongType, L"json assertion \"a == b\" failed in Some.h, line 6",
                  [] { RaiseRapidJsonAssertion("a == b", "C:\\x/include\\Some.h", 6); });
  ExpectException(kWrongType, L"json assertion \"a == b\" failed in Some.h, line 7",
                  [] { RaiseRapidJsonAssertion("a == b", "Some.h", 7); });
}

TEST(Assertions, AreRaisedByACopyOfAValueThatIsNotAnObject) {
  CJsonObject copy;
  copy.SetStringValue(L"a", L"x");
  ExpectAssertion(ExceptionOf([&] { copy.CopyFrom(*Parse(L"[1]")); }), L"IsObject()");
  EXPECT_EQ(copy.ToJson(), LR"({"a":"x"})");
}

TEST(Assertions, AreRaisedByRapidJsonItself) {
  const auto json = Parse(LR"({"a":"x"})");
  const CJsonObject::Value& value = (*json->Share())["a"];
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
    EXPECT_TRUE(exception.GetErrorMessage().starts_with(
        L"json assertion \"m_pDocument != nullptr\" failed in CJsonObject.h, line "))
        << testing::PrintToString(exception.GetErrorMessage());
  }
}

}  // namespace
