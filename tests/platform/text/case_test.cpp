// Comparison, search and lower case, as Windows does them.
#include <gtest/gtest.h>

#include <string>

#include "CCADStringHelper.h"
#include "CStringHelper.h"

using namespace std::string_literals;

namespace {

constexpr auto kNowhere = std::wstring::npos;

int Sign(int number) { return (number > 0) - (number < 0); }

struct Comparison {
  const char* name;
  std::wstring a;
  std::wstring b;
  int with_case;
  int without_case;
};

void PrintTo(const Comparison& comparison, std::ostream* out) { *out << comparison.name; }

const Comparison kComparisons[] = {
    {"both_empty", L"", L"", 0, 0},
    {"one_empty", L"", L"a", -1, -1},
    {"equal", L"A.sldprt", L"A.sldprt", 0, 0},
    {"ascii_case", L"A.SLDPRT", L"a.sldprt", -1, 0},
    {"umlaut_case", L"W\u00c4LLE", L"w\u00e4lle", -1, 0},
    {"cyrillic_case", L"\u0414\u0435\u0442\u0430\u043b\u044c", L"\u0434\u0415\u0422\u0410\u041b\u042c", -1,
     0},
    {"fullwidth_case", L"\uff21", L"\uff41", -1, 0},
    {"chinese", L"\u96f6\u4ef6", L"\u96f6\u4ef6", 0, 0},
    {"no_letters_expand", L"stra\u00dfe", L"strasse", 1, 1},
    {"no_accents_ignored", L"\u00e9", L"e", 1, 1},
    {"composed_is_not_decomposed", L"\u00e9", L"e\u0301", 1, 1},
    {"no_punctuation_ignored", L"co-op", L"coop", -1, -1},
    {"order_of_letters", L"a", L"B", 1, -1},
    {"order_by_upper_case", L"_", L"a", -1, 1},
    {"shorter_first", L"Part", L"Part1", -1, -1},
    {"after_a_null", L"a\0b"s, L"A\0c"s, 1, -1},
    {"null_counts", L"a"s, L"a\0"s, -1, -1},
};

class Comparisons : public testing::TestWithParam<Comparison> {};

TEST_P(Comparisons, AreOrdinal) {
  const auto& [name, a, b, with_case, without_case] = GetParam();
  EXPECT_EQ(Sign(CStringHelper::StringCompare(a, b, true)), with_case);
  EXPECT_EQ(Sign(CStringHelper::StringCompare(b, a, true)), -with_case);
  EXPECT_EQ(Sign(CStringHelper::StringCompare(a, b, false)), without_case);
  EXPECT_EQ(Sign(CStringHelper::StringCompare(b, a, false)), -without_case);
  EXPECT_EQ(Sign(CCADStringHelper::StringCompare(a, b, true)), with_case);
  EXPECT_EQ(Sign(CCADStringHelper::StringCompare(a, b, false)), without_case);
}

std::string NameOf(const testing::TestParamInfo<Comparison>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, Comparisons, testing::ValuesIn(kComparisons), NameOf);

TEST(StringCompare, TreatsANullViewAsEmpty) {
  for (const bool case_sensitive : {false, true}) {
    EXPECT_EQ(CStringHelper::StringCompare({}, {}, case_sensitive), 0);
    EXPECT_EQ(CStringHelper::StringCompare({}, L"", case_sensitive), 0);
    EXPECT_LT(CStringHelper::StringCompare({}, L"a", case_sensitive), 0);
  }
}

TEST(FindStringNoCase, FindsTheFirstPlace) {
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"C:\\x\\Part1.SldPrt", L".sldprt"), 10u);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"x.SLDPRT.old\\y.sldprt", L".sldprt"), 1u);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"GR\u00d6SSE", L"\u00f6"), 2u);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"\u96f6\u4ef6.slddrw", L".SLDDRW"), 2u);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"abc", L"ABC"), 0u);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"a\0B"s, L"b"), 2u);
}

TEST(FindStringNoCase, FindsNothingElse) {
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"Part1.sldpr", L".sldprt"), kNowhere);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"", L"a"), kNowhere);
  EXPECT_EQ(CStringHelper::FindStringNoCase({}, L"a"), kNowhere);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"stra\u00dfe", L"ss"), kNowhere);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"caf\u00e9", L"cafe"), kNowhere);
}

TEST(FindStringNoCase, FindsAnEmptyPatternAtTheStart) {
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"abc", L""), 0u);
  EXPECT_EQ(CStringHelper::FindStringNoCase(L"", L""), 0u);
}

TEST(ToLower, FollowsTheInvariantLocale) {
  const std::pair<std::wstring, std::wstring> cases[] = {
      {L"", L""},
      {L"SLDPRT", L"sldprt"},
      {L"TITLE I", L"title i"},
      {L"\u00c4\u00d6\u00dc\u00df", L"\u00e4\u00f6\u00fc\u00df"},
      {L"\u0414\u0415\u0422\u0410\u041b\u042c", L"\u0434\u0435\u0442\u0430\u043b\u044c"},
      {L"\u039f\u03a3", L"\u03bf\u03c3"},
      {L"\u96f6\u4ef6-1_(2)", L"\u96f6\u4ef6-1_(2)"},
      {L"A\U0001F600B", L"a\U0001F600b"},
      {L"A\0B\0"s, L"a\0b\0"s},
  };
  for (const auto& [text, lower] : cases) {
    EXPECT_EQ(CStringHelper::ToLower(text), lower);
    EXPECT_EQ(CCADStringHelper::ToLower(text), lower);
  }
}

}  // namespace
