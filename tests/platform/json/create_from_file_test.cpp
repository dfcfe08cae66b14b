// Parsing files.
#include "json_test_support.h"
#include "temp_files.h"

using namespace std::string_literals;

namespace {

/// A temporary folder for one test.
class Files : public testing::Test, public TempFiles {
 protected:
  /// Expects that reading a file of these bytes fails with "PATH", then `fault`.
  void ExpectFault(const std::string& bytes, const std::wstring& fault) const {
    const std::wstring path = Write(L"View.json", bytes);
    CJsonObject json;
    json.SetStringValue(L"before", L"x");
    ExpectException(kWrongType, L"\"" + path + L"\", " + fault, [&] { json.CreateFromFile(path); });
    EXPECT_EQ(json.ToJson(), LR"({"before":"x"})") << "the object is unchanged";
  }
};

TEST_F(Files, BecomeTheContent) {
  CJsonObject json;
  json.SetStringValue(L"before", L"x");
  json.CreateFromFile(Write(L"View.json", "{\r\n\t\"Menu\": [ {\"name\": \"\xE9\x9B\xB6\"} ]\r\n}\r\n"));
  EXPECT_EQ(json.ToJson(), L"{\"Menu\":[{\"name\":\"\u96f6\"}]}");
}

TEST_F(Files, MayHaveAnyName) {
  for (const wchar_t* name : {L"\u4e3b\u83dc\u5355.json", L"with spaces & (signs).json", L"no_extension"}) {
    CJsonObject json;
    json.CreateFromFile(Write(name, R"({"a":"x"})"));
    EXPECT_EQ(json.GetStringValue(L"a"), L"x");
  }
}

TEST_F(Files, MayBeginWithAByteOrderMark) {
  CJsonObject json;
  json.CreateFromFile(Write(L"View.json", "\xEF\xBB\xBF{\"a\":\"x\"}"));
  EXPECT_EQ(json.ToJson(), LR"({"a":"x"})");
  ExpectFault("\xEF\xBB\xBF{x", L"line 1, column 2: Missing a name for object member.");
  ExpectFault("\xEF\xBB\xBF", L"line 1, column 1: The document is empty.");
  ExpectFault("\xEF\xBB\xBF\xEF\xBB\xBF{}", L"line 1, column 1: Invalid value.");
}

TEST_F(Files, MayHaveARootThatIsNotAnObject) {
  CJsonObject json;
  json.CreateFromFile(Write(L"View.json", R"([{"Menu":[]}])"));
  EXPECT_EQ(json.ToJson(), LR"([{"Menu":[]}])");
  EXPECT_FALSE(json.IsExist(L"Menu"));
  ExpectException(kMemberMissing, L"json member [Menu] not exist!", [&] { json.GetObjectArray(L"Menu"); });
}

TEST_F(Files, MayBeLarge) {
  const std::string value(5'000'000, 'x');
  CJsonObject json;
  json.CreateFromFile(Write(L"View.json", "{\"a\":\"" + value + "\"}"));
  EXPECT_EQ(json.GetStringValue(L"a").size(), value.size());
}

TEST_F(Files, ThatAreMalformedAreReportedWithLineAndColumn) {
  ExpectFault("", L"line 1, column 1: The document is empty.");
  ExpectFault("{\"a\":1} x", L"line 1, column 9: The document root must not be followed by other values.");
  ExpectFault("{\"a\":1}\0"s, L"line 1, column 8: The document root must not be followed by other values.");
  ExpectFault("{\n  \"a\": 1\n  \"b\": 2\n}",
              L"line 3, column 3: Missing a comma or '}' after an object member.");
  ExpectFault("{\r\n\"a\": [1,\r\n2 3]}",
              L"line 3, column 3: Missing a comma or ']' after an array element.");
  ExpectFault("{\"a\"", L"line 1, column 5: Missing a colon after a name of object member.");
  ExpectFault("[\n1,\n", L"line 3, column 1: Invalid value.");
  ExpectFault("[\"abc", L"line 1, column 6: Missing a closing quotation mark in string.");
  ExpectFault("[\"ab\\x\"]", L"line 1, column 5: Invalid escape character in string.");
  ExpectFault("[1.8e308]", L"line 1, column 2: Number too big to be stored in double.");
  ExpectFault("[1e400]", L"line 1, column 2: Number too big to be stored in double.");
}

TEST_F(Files, CountColumnsInCharacters) {
  ExpectFault("{\"\xE9\x9B\xB6\xE4\xBB\xB6\xF0\x9F\x98\x80\" 1}",
              L"line 1, column 8: Missing a colon after a name of object member.");
}

TEST_F(Files, ThatAreNotUtf8AreReportedWithLineAndColumn) {
  const std::wstring invalid = L"Invalid encoding in string.";
  ExpectFault("{\"a\":\n\"M\xFCller\"}", L"line 2, column 3: " + invalid);
  ExpectFault("[\"\xC0\x80\"]", L"line 1, column 3: " + invalid);
  ExpectFault("[\"\xE0\x9F\xBF\"]", L"line 1, column 3: " + invalid);
  ExpectFault("[\"x\xED\xA0\x80\"]", L"line 1, column 4: " + invalid);
  ExpectFault("[\"\xF4\x90\x80\x80\"]", L"line 1, column 3: " + invalid);
  ExpectFault("[\"\xE4\xBB\"]", L"line 1, column 3: " + invalid);
  ExpectFault("\xFF\xFE{\0}\0"s, L"line 1, column 1: Invalid value.");
}

TEST_F(Files, WithUnpairedSurrogatesAreReportedWithLineAndColumn) {
  const std::wstring invalid = L"The surrogate pair in string is invalid.";
  ExpectFault(R"(["\ud83d"])", L"line 1, column 3: " + invalid);
  ExpectFault("[\n \"a\\\\\",\n \"b\\ud83d\\ude00\\udc00\"]", L"line 3, column 16: " + invalid);
  ExpectFault(R"(["\udc00", x])", L"line 1, column 3: " + invalid);
  ExpectFault(R"({"\uDFFF": 1})", L"line 1, column 3: " + invalid);
}

TEST_F(Files, WithTooManyLevelsAreReportedWithLineAndColumn) {
  ExpectFault(std::string(1001, '[') + std::string(1001, ']'),
              L"line 1, column 1001: More than 1,000 levels of nesting.");
  ExpectFault(std::string(1'000'000, '['), L"line 1, column 1001: More than 1,000 levels of nesting.");
}

TEST_F(Files, ThatCannotBeReadAreReportedWithTheReason) {
#ifdef _WIN32
  const std::wstring missing_reason = L" (error 2)", folder_reason = L" (error 5)";
#else
  const std::wstring missing_reason = L": No such file or directory", folder_reason = L": Is a directory";
#endif
  const std::wstring missing = Path(L"no such \u96f6.json");
  for (const auto& [path, reason] :
       {std::pair(missing, missing_reason), std::pair(Folder(), folder_reason)}) {
    CJsonObject json;
    json.SetStringValue(L"before", L"x");
    const CZALException exception = ExceptionOf([&] { json.CreateFromFile(path); });
    const std::wstring& message = exception.GetErrorMessage();
    EXPECT_EQ(exception.GetErrorCode(), kWrongType);
    EXPECT_TRUE(message.starts_with(L"cannot read \"" + path + L"\": ")) << testing::PrintToString(message);
    EXPECT_TRUE(message.ends_with(reason)) << testing::PrintToString(message);
    EXPECT_EQ(json.ToJson(), LR"({"before":"x"})") << "the object is unchanged";
  }
}

TEST_F(Files, CanReplaceAView) {
  const auto json = Parse(LR"({"a":{"b":1},"c":2})");
  json->GetObjectShared(L"a")->CreateFromFile(Write(L"View.json", R"({"d":"x"})"));
  EXPECT_EQ(json->ToJson(), LR"({"a":{"d":"x"},"c":2})");
}

}  // namespace
