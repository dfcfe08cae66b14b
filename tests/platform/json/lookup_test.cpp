// The exported operations on members.
#include "json_test_support.h"

using namespace std::string_literals;

namespace {

using Strings = std::vector<std::wstring>;
using FoundBool = std::pair<bool, bool>;
using FoundStrings = std::pair<bool, Strings>;

struct Case {
  const char* name;
  std::wstring value{};  ///< of the member, as JSON; empty if there is no member
  std::wstring as_string{};
  long as_long = 0;
  FoundBool as_bool{false, false};
  bool is_string_array = false;
  bool has_other_elements = false;  ///< an array
};

void PrintTo(const Case& member, std::ostream* out) { *out << member.name; }

const Case kCases[] = {
    {.name = "missing"},
    {.name = "null", .value = L"null"},
    {.name = "true", .value = L"true", .as_string = L"true", .as_bool = {true, true}},
    {.name = "false", .value = L"false", .as_string = L"false", .as_bool = {true, false}},
    {.name = "string", .value = L"\"x\"", .as_string = L"x"},
    {.name = "empty_string", .value = L"\"\""},
    {.name = "string_of_a_number", .value = L"\"7\"", .as_string = L"7"},
    {.name = "string_of_a_boolean", .value = L"\"true\"", .as_string = L"true"},
    {.name = "zero", .value = L"0", .as_string = L"0"},
    {.name = "one", .value = L"1", .as_string = L"1", .as_long = 1},
    {.name = "largest", .value = L"2147483647", .as_string = L"2147483647", .as_long = 2147483647},
    {.name = "smallest", .value = L"-2147483648", .as_string = L"-2147483648", .as_long = -2147483647 - 1},
    {.name = "too_large", .value = L"2147483648", .as_string = L"2147483648"},
    {.name = "too_small", .value = L"-2147483649", .as_string = L"-2147483649"},
    {.name = "largest_of_64_bits", .value = L"18446744073709551615", .as_string = L"18446744073709551615"},
    {.name = "smallest_of_64_bits", .value = L"-9223372036854775808", .as_string = L"-9223372036854775808"},
    {.name = "beyond_64_bits", .value = L"100000000000000000000", .as_string = L"100000000000000000000.0"},
    {.name = "fraction", .value = L"1.50", .as_string = L"1.5"},
    {.name = "fraction_of_many_digits", .value = L"0.1000000000000000055511151231", .as_string = L"0.1"},
    {.name = "large_exponent", .value = L"1E+300", .as_string = L"1e300"},
    {.name = "object", .value = L"{ \"k\" : \"x\" }", .as_string = L"{\"k\":\"x\"}"},
    {.name = "empty_array", .value = L"[]", .as_string = L"[]", .is_string_array = true},
    {.name = "array_of_strings",
     .value = L"[\"\u96f6\"]",
     .as_string = L"[\"\u96f6\"]",
     .is_string_array = true},
    {.name = "array_with_a_number",
     .value = L"[\"x\",1]",
     .as_string = L"[\"x\",1]",
     .has_other_elements = true},
    {.name = "array_with_null", .value = L"[null]", .as_string = L"[null]", .has_other_elements = true},
    {.name = "array_with_an_array", .value = L"[[]]", .as_string = L"[[]]", .has_other_elements = true},
};

class Members : public testing::TestWithParam<Case> {
 protected:
  const CJsonObject::Pointer m_json =
      Parse(GetParam().value.empty() ? L"{}" : L"{\"k\":" + GetParam().value + L"}");
};

TEST_P(Members, ReadAsAStringAnIntegerAndABoolean) {
  EXPECT_EQ(m_json->GetStringValue(L"k"), GetParam().as_string);
  EXPECT_EQ(m_json->GetLongValue(L"k"), GetParam().as_long);
  EXPECT_EQ(m_json->GetPropertyBoolValue(L"k"), GetParam().as_bool);
  EXPECT_EQ(m_json->IsExist(L"k"), !GetParam().value.empty());
}

TEST_P(Members, ThatAreNotStringArraysAreRefusedAsStringArrays) {
  const bool is_fine = GetParam().is_string_array || GetParam().value.empty();
  if (is_fine) {
    EXPECT_EQ(m_json->GetPropertyStringArrayValue(L"k").first, GetParam().is_string_array);
  } else {
    ExpectException(kWrongType,
                    GetParam().has_other_elements ? L"json member [k] has an element that is no string"
                                                  : L"json member [k] is not Array!",
                    [&] { m_json->GetPropertyStringArrayValue(L"k"); });
  }
}

TEST_P(Members, AreReplacedByAString) {
  m_json->SetStringValue(L"k", L"new");
  EXPECT_EQ(m_json->ToJson(), LR"({"k":"new"})");
}

std::string NameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, Members, testing::ValuesIn(kCases), NameOf);

TEST(StringArrays, AreReturnedInArrayOrder) {
  EXPECT_EQ(Parse(LR"({"OpenFile":["b","","a","\u0000x","b"]})")->GetPropertyStringArrayValue(L"OpenFile"),
            FoundStrings(true, {L"b", L"", L"a", L"\0x"s, L"b"}));
  EXPECT_EQ(Parse(LR"({"OpenFile":[]})")->GetPropertyStringArrayValue(L"OpenFile"), FoundStrings(true, {}));
  EXPECT_EQ(Parse(L"{}")->GetPropertyStringArrayValue(L"OpenFile"), FoundStrings(false, {}));
}

TEST(Keys, AreComparedExactly) {
  const auto json = Parse(L"{\"Name\":\"x\",\"a\\u0000b\":\"y\",\"\u96f6\":\"z\",\"\":\"none\"}");
  for (const std::wstring& other : {L"name"s, L"NAME"s, L"Nam"s, L"Name "s, L"a"s, L"a\0"s, L"a\0c"s}) {
    EXPECT_FALSE(json->IsExist(other)) << testing::PrintToString(other);
    EXPECT_EQ(json->GetStringValue(other), L"");
  }
  EXPECT_EQ(json->GetStringValue(L"Name"), L"x");
  EXPECT_EQ(json->GetStringValue(L"a\0b"s), L"y");
  EXPECT_EQ(json->GetStringValue(L"\u96f6"), L"z");
  EXPECT_EQ(json->GetStringValue(L""), L"none");
}

TEST(Keys, AreNamesAndNotJsonPointers) {
  const auto json = Parse(LR"({"a":{"b":"inner"},"/a/b":"slashes","a.b":"point"})");
  EXPECT_EQ(json->GetStringValue(L"/a/b"), L"slashes");
  EXPECT_EQ(json->GetStringValue(L"a.b"), L"point");
  EXPECT_FALSE(json->IsExist(L"a/b"));
  json->SetStringValue(L"/a/c", L"new");
  EXPECT_EQ(json->ToJson(), LR"({"a":{"b":"inner"},"/a/b":"slashes","a.b":"point","/a/c":"new"})");
}

TEST(Keys, FindTheFirstOfEqualNames) {
  const auto json = Parse(LR"({"a":"first","a":"second","b":true,"b":1})");
  EXPECT_EQ(json->GetStringValue(L"a"), L"first");
  EXPECT_EQ(json->GetPropertyBoolValue(L"b"), FoundBool(true, true));
  EXPECT_EQ(json->GetLongValue(L"b"), 0);
  json->SetStringValue(L"a", L"new");
  EXPECT_EQ(json->ToJson(), LR"({"a":"new","a":"second","b":true,"b":1})");
}

TEST(SetStringValue, AddsAtTheEndAndReplacesInPlace) {
  const auto json = Parse(LR"({"a":1,"b":2})");
  json->SetStringValue(L"c", L"x");
  json->SetStringValue(L"a", L"a longer text than what was there before it");
  EXPECT_EQ(json->ToJson(), LR"({"a":"a longer text than what was there before it","b":2,"c":"x"})");
  EXPECT_EQ(json->GetStringValue(L"c"), L"x");
}

TEST(SetStringValue, CopiesNameAndValue) {
  CJsonObject json;
  {
    std::wstring key = L"a name of more than fourteen bytes";
    std::wstring value = L"a value of more than fourteen bytes";
    json.SetStringValue(key, value);
    key.assign(key.size(), L'#');
    value.assign(value.size(), L'#');
  }
  EXPECT_EQ(json.ToJson(),
            LR"({"a name of more than fourteen bytes":"a value of more than fourteen bytes"})");
}

TEST(SetStringValue, KeepsManyMembers) {
  CJsonObject json;
  for (int i = 0; i < 1000; ++i) json.SetStringValue(std::to_wstring(i), std::to_wstring(i * i));
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(json.GetStringValue(std::to_wstring(i)), std::to_wstring(i * i));
}

TEST(ValuesThatAreNotObjects, HaveNoMembers) {
  for (const wchar_t* text : {L"[{\"k\":\"x\"}]", L"\"k\"", L"1", L"1.5", L"true", L"null"}) {
    const auto json = Parse(text);
    EXPECT_FALSE(json->IsExist(L"k"));
    EXPECT_EQ(json->GetStringValue(L"k"), L"");
    EXPECT_EQ(json->GetLongValue(L"k"), 0);
    EXPECT_EQ(json->GetPropertyBoolValue(L"k"), FoundBool(false, false));
    EXPECT_EQ(json->GetPropertyStringArrayValue(L"k"), FoundStrings(false, {}));
    EXPECT_EQ(json->ToJson(), text) << "a lookup changes nothing";
  }
}

TEST(ValuesThatAreNotObjects, BecomeObjectsIfAStringIsSet) {
  for (const wchar_t* text : {L"[1]", L"\"k\"", L"1", L"true", L"null"}) {
    const auto json = Parse(text);
    json->SetStringValue(L"k", L"x");
    EXPECT_EQ(json->ToJson(), LR"({"k":"x"})");
  }
}

}  // namespace
