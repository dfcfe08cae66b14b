// What a failed comparison of two lists prints.
#include "list_difference.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::wstring>;

testing::AssertionResult Compare(const Calls& actual, const Calls& expected) {
  return SameEntries("Calls()", "expected", actual, expected);
}

TEST(ListDifference, IsEmptyForEqualLists) {
  for (const Calls& calls : {Calls{}, Calls{L"a"}, Calls{L"a", L"b", L"c", L"d"}}) {
    const testing::AssertionResult result = Compare(calls, calls);
    EXPECT_TRUE(result);
    EXPECT_STREQ(result.message(), "");
  }
}

TEST(ListDifference, ShowsADifferingEntryBetweenItsNeighbours) {
  const testing::AssertionResult result =
      Compare({L"a", L"b", L"c", L"钢 😀", L"e", L"f", L"g"}, {L"a", L"b", L"c", L"d", L"e", L"f", L"g"});
  EXPECT_FALSE(result);
  EXPECT_STREQ(result.message(),
               "Calls() differs from the expected list at index 3\n"
               "actual, 7 entries:\n"
               "    1: b\n"
               "    2: c\n"
               "  > 3: 钢 😀\n"
               "    4: e\n"
               "    5: f\n"
               "expected, 7 entries:\n"
               "    1: b\n"
               "    2: c\n"
               "  > 3: d\n"
               "    4: e\n"
               "    5: f\n");
}

TEST(ListDifference, ShowsWhereTheShorterListEnds) {
  const Calls three = {L"a", L"b", L"c"};
  const Calls one = {L"a"};
  const testing::AssertionResult longer = Compare(three, one);
  EXPECT_FALSE(longer);
  EXPECT_STREQ(longer.message(),
               "Calls() differs from the expected list at index 1\n"
               "actual, 3 entries:\n"
               "    0: a\n"
               "  > 1: b\n"
               "    2: c\n"
               "expected, 1 entry:\n"
               "    0: a\n"
               "  > end of the list\n");
  const testing::AssertionResult shorter = Compare({}, one);
  EXPECT_FALSE(shorter);
  EXPECT_STREQ(shorter.message(),
               "Calls() differs from the expected list at index 0\n"
               "actual, 0 entries:\n"
               "  > end of the list\n"
               "expected, 1 entry:\n"
               "  > 0: a\n");
}

TEST(ListDifference, ComparesListsOfNarrowTextsToo) {
  const std::vector<std::string> requests = {"QD_PLMQuery 材料"};
  EXPECT_SAME_ENTRIES(requests, std::vector<std::string>{"QD_PLMQuery 材料"});
  EXPECT_STREQ(SameEntries("Asked()", "", requests, {"other"}).message(),
               "Asked() differs from the expected list at index 0\n"
               "actual, 1 entry:\n"
               "  > 0: QD_PLMQuery 材料\n"
               "expected, 1 entry:\n"
               "  > 0: other\n");
}

}  // namespace
