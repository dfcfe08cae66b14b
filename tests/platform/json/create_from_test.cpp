// Parsing texts.
#include <string_view>

#include "json_test_support.h"

using namespace std::string_literals;

namespace {

struct Case {
  const char* name;
  std::wstring text;
};

void PrintTo(const Case& text, std::ostream* out) { *out << text.name; }
std::string NameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

class WellFormed : public testing::TestWithParam<Case> {};

TEST_P(WellFormed, BecomesTheContent) {
  CJsonObject json;
  EXPECT_TRUE(json.CreateFrom(GetParam().text));
  EXPECT_EQ(json.ToJson(), GetParam().text);
}

const Case kWellFormed[] = {
    {"empty_object", L"{}"},
    {"members", LR"({"a":1,"b":"x","c":true,"d":null,"e":[1,{"f":[]}],"g":{}})"},
    {"equal_names", LR"({"a":1,"a":2})"},
    {"empty_name", LR"({"":1})"},
    {"root_array", L"[1,\"a\",{}]"},
    {"root_string", L"\"text\""},
    {"root_number", L"-17"},
    {"root_null", L"null"},
    {"chinese", L"{\"\u540d\u79f0\":\"\u96f6\u4ef6\"}"},
    {"integers", L"[2147483647,-2147483648,4294967295,9223372036854775807,18446744073709551615]"},
    {"fractions", L"[0.1,-2.5,1e300,5e-324,1.7976931348623157e308,123456.789]"},
};
INSTANTIATE_TEST_SUITE_P(, WellFormed, testing::ValuesIn(kWellFormed), NameOf);

TEST(CreateFrom, SkipsWhiteSpace) {
  EXPECT_EQ(Parse(L" \t\r\n{ \"a\" :\n[ 1 , 2 ]\t}\r\n ")->ToJson(), LR"({"a":[1,2]})");
}

TEST(CreateFrom, ReadsNumbersAtFullPrecision) {
  const auto json = Parse(L"[83030920993190389e-32,61833409841433666e-37,72454077857120239e30]");
  const auto& numbers = *json->Share();
  EXPECT_EQ(numbers[0].GetDouble(), 83030920993190389e-32);
  EXPECT_EQ(numbers[1].GetDouble(), 61833409841433666e-37);
  EXPECT_EQ(numbers[2].GetDouble(), 72454077857120239e30);
}

TEST(CreateFrom, ReadsNumbersOfManyDigits) {
  const std::wstring zeros(400, L'0');
  const auto json = Parse(L"[0." + zeros + L"1e-300,0." + zeros + L"1e400,-0." + std::wstring(310, L'3') +
                          L"e-300,1e-400,1e-99999999999999999999,0.1" + zeros + L"1]");
  const auto& numbers = *json->Share();
  const double expected[] = {0, 0.1, -1.0 / 3 * 1e-300, 0, 0, 0.1};
  for (rapidjson::SizeType i = 0; i < numbers.Size(); ++i)
    EXPECT_DOUBLE_EQ(numbers[i].GetDouble(), expected[i]);
  EXPECT_EQ(numbers.Size(), std::size(expected));
}

TEST(CreateFrom, ResolvesEscapes) {
  EXPECT_EQ(Parse(LR"({"a":"\"\\\/\b\f\n\r\t\u0000\u00e4\u96F6\ud83d\uDE00"})")->GetStringValue(L"a"),
            L"\"\\/\b\f\n\r\t\0\u00e4\u96f6\U0001F600"s);
}

class Malformed : public testing::TestWithParam<Case> {};

TEST_P(Malformed, LeavesAnEmptyObject) {
  CJsonObject json;
  json.SetStringValue(L"before", L"x");
  EXPECT_FALSE(json.CreateFrom(GetParam().text));
  EXPECT_EQ(json.ToJson(), L"{}");
  json.SetStringValue(L"after", L"y");
  EXPECT_EQ(json.ToJson(), LR"({"after":"y"})") << "the object is still usable";
}

const Case kMalformed[] = {
    {"nothing", L""},
    {"white_space", L" \r\n\t"},
    {"null_character", L"\0"s},
    {"words", L"not json"},
    {"open_object", L"{\"a\":1"},
    {"open_array", L"[1,2"},
    {"open_string", L"{\"a\":\"x}"},
    {"close_only", L"}"},
    {"wrong_close", L"{\"a\":[1}]"},
    {"no_colon", L"{\"a\" 1}"},
    {"no_comma", L"[1 2]"},
    {"no_name", L"{1:2}"},
    {"bare_name", L"{a:1}"},
    {"single_quotes", L"{'a':1}"},
    {"trailing_comma_in_object", L"{\"a\":1,}"},
    {"trailing_comma_in_array", L"[1,]"},
    {"comment", L"{/**/}"},
    {"trailing_text", L"{}x"},
    {"second_root", L"{}{}"},
    {"trailing_null_character", L"{}\0"s},
    {"garbage_after_a_null_character", L"{\"a\":1}\0garbage"s},
    {"null_character_in_string", L"{\"a\":\"x\0y\"}"s},
    {"line_feed_in_string", L"\"a\nb\""},
    {"unknown_escape", LR"("\x")"},
    {"short_escape", LR"("\u12")"},
    {"half_word", L"tru"},
    {"capital_word", L"True"},
    {"not_a_number", L"NaN"},
    {"leading_zero", L"01"},
    {"plus_sign", L"+1"},
    {"bare_point", L"1."},
    {"no_exponent", L"1e"},
    {"beyond_every_double", L"1e400"},
    {"just_beyond_every_double", L"-1.8e308"},
    {"byte_order_mark", L"\ufeff{}"},
    {"high_surrogate_alone", LR"("\ud83d")"},
    {"high_surrogate_before_text", LR"("\ud83dx")"},
    {"high_surrogate_before_escape", LR"("\ud83d\n")"},
    {"high_surrogate_twice", LR"("\ud83d\ud83d\ude00")"},
    {"low_surrogate_alone", LR"("\ude00")"},
    {"low_surrogate_after_pair", LR"("\ud83d\ude00\udfff")"},
    {"low_surrogate_after_backslash", LR"("\\\udc00")"},
    {"low_surrogate_in_name", LR"({"\uDC00":1})"},
};
INSTANTIATE_TEST_SUITE_P(, Malformed, testing::ValuesIn(kMalformed), NameOf);

TEST(CreateFrom, AcceptsAnEscapedBackslashBeforeTextLikeAnEscape) {
  EXPECT_EQ(Parse(LR"(["\\udc00","\\\\ud83d"])")->ToJson(), LR"(["\\udc00","\\\\ud83d"])");
}

TEST(CreateFrom, ReplacesALoneSurrogateThatIsNotEscaped) {
  EXPECT_EQ(Parse(L"{\"a\":\"x\xDE00\"}")->GetStringValue(L"a"), L"x\ufffd");
}

TEST(CreateFrom, ReplacesTheContent) {
  const auto json = Parse(LR"({"a":1,"b":2})");
  EXPECT_TRUE(json->CreateFrom(LR"({"b":3})"));
  EXPECT_EQ(json->ToJson(), LR"({"b":3})");
}

std::wstring Repeat(std::wstring_view part, std::size_t times) {
  std::wstring text;
  text.reserve(part.size() * times);
  for (std::size_t i = 0; i < times; ++i) text += part;
  return text;
}

std::wstring NestedArrays(std::size_t levels) { return Repeat(L"[", levels) + Repeat(L"]", levels); }

std::wstring NestedObjects(std::size_t levels) {
  return Repeat(L"{\"a\":", levels - 1) + L"{}" + Repeat(L"}", levels - 1);
}

TEST(Levels, AThousandAreWellFormed) {
  for (const std::wstring& text : {NestedArrays(1000), NestedObjects(1000)}) {
    EXPECT_EQ(Parse(text)->ToJson(), text);
  }
}

TEST(Levels, MoreThanAThousandAreMalformed) {
  CJsonObject json;
  for (const std::size_t levels : {1001, 1'000'000}) {
    EXPECT_FALSE(json.CreateFrom(NestedArrays(levels)));
    EXPECT_FALSE(json.CreateFrom(NestedObjects(levels)));
    EXPECT_FALSE(json.CreateFrom(Repeat(L"[", levels)));
    EXPECT_EQ(json.ToJson(), L"{}");
  }
}

TEST(Levels, AreCountedInDepthOnly) {
  const std::wstring text = L"[" + Repeat(L"[],{},", 5000) + NestedArrays(999) + L"]";
  EXPECT_EQ(Parse(text)->ToJson(), text);
  CJsonObject json;
  EXPECT_FALSE(json.CreateFrom(L"[" + Repeat(L"[],{},", 5000) + NestedArrays(1000) + L"]"));
}

}  // namespace
