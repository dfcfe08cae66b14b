// The text of an object, character by character.
#include "json_test_support.h"

using namespace std::string_literals;

namespace {

struct Case {
  const char* name;
  std::wstring value;
  std::wstring written;
};

void PrintTo(const Case& text, std::ostream* out) { *out << text.name; }

const Case kCases[] = {
    {"empty", L"", L""},
    {"quote", L"a\"b", LR"(a\"b)"},
    {"backslash", L"C:\\x\\A.sldprt", LR"(C:\\x\\A.sldprt)"},
    {"slash", L"a/b", L"a/b"},
    {"cr_lf", L"a\r\nb", LR"(a\r\nb)"},
    {"short_escapes", L"\b\f\t", LR"(\b\f\t)"},
    {"control_characters", L"\x01\x0b\x1f", LR"(\u0001\u000B\u001F)"},
    {"nulls", L"a\0b\0"s, LR"(a\u0000b\u0000)"},
    {"delete_and_c1", L"\x7f\u0085", L"\x7f\u0085"},
    {"html", L"<a href='x'>&</a>", L"<a href='x'>&</a>"},
    {"line_separators", L"\u2028\u2029", L"\u2028\u2029"},
    {"umlauts", L"\u00c4\u00e4\u00df", L"\u00c4\u00e4\u00df"},
    {"chinese", L"\u96f6\u4ef6", L"\u96f6\u4ef6"},
    {"emoji", L"\U0001F600", L"\U0001F600"},
    {"lone_surrogates", L"\xD83D.\xDE00", L"\ufffd.\ufffd"},
    {"expression", L"\"SW-Mass@Part1.SLDPRT\"", LR"(\"SW-Mass@Part1.SLDPRT\")"},
};

class Texts : public testing::TestWithParam<Case> {};

TEST_P(Texts, AreEscapedAsValueAndAsName) {
  CJsonObject json;
  json.SetStringValue(L"key", GetParam().value);
  EXPECT_EQ(json.ToJson(), L"{\"key\":\"" + GetParam().written + L"\"}");

  CJsonObject named;
  named.SetStringValue(GetParam().value, L"value");
  EXPECT_EQ(named.ToJson(), L"{\"" + GetParam().written + L"\":\"value\"}");
}

TEST_P(Texts, AreTheSameAfterParsing) {
  CJsonObject json;
  json.SetStringValue(GetParam().value, GetParam().value);
  const auto again = Parse(json.ToJson());
  EXPECT_EQ(again->ToJson(), json.ToJson());
  EXPECT_TRUE(again->IsExist(GetParam().value));
  EXPECT_EQ(again->GetStringValue(GetParam().value), json.GetStringValue(GetParam().value));
}

std::string NameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, Texts, testing::ValuesIn(kCases), NameOf);

TEST(ToJson, OfANewObjectIsAnEmptyObject) { EXPECT_EQ(CJsonObject().ToJson(), L"{}"); }

TEST(ToJson, KeepsTheOrderOfMembers) {
  CJsonObject json;
  for (const wchar_t* key : {L"z", L"a", L"m", L"B", L"10", L"9"}) json.SetStringValue(key, L"");
  EXPECT_EQ(json.ToJson(), LR"({"z":"","a":"","m":"","B":"","10":"","9":""})");
}

TEST(ToJson, OfAViewIsTheTextOfItsValue) {
  EXPECT_EQ(Parse(LR"({"a":{"b":[1]},"c":2})")->GetObjectShared(L"a")->ToJson(), LR"({"b":[1]})");
}

}  // namespace
