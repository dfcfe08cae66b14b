// What reading and writing an answer may cost: allocations, and bytes that are moved, counted and not timed.
#include <string>

#include "CJsonObject.h"
#include "failing_allocation.h"
#include "json_test_support.h"

namespace {

constexpr std::size_t kPaths = 10'000;

/// An answer with many paths.
std::wstring Answer() {
  std::wstring text = L"{\"OpenFile\":[";
  for (std::size_t number = 0; number < kPaths; ++number) {
    text += (number == 0 ? L"\"" : L",\"") + std::wstring(L"C:\\\\PLM\\\\Welle ") + std::to_wstring(number) +
            L".sldprt\"";
  }
  return text + L"]}";
}

TEST(JsonBudget, ReadsAnAnswerWithAnAllocationForManyValues) {
  const std::wstring text = Answer();
  CJsonObject object;
  Attempt attempt({});
  attempt([&] { object.CreateFrom(text); });
  // Blocks of 64 KiB for the document, and what grows by doubling.
  EXPECT_LT(attempt.Count(), 60u);
}

TEST(JsonBudget, ReadsTheTextsOfAListWithOneAllocationEach) {
  CJsonObject object;
  ASSERT_TRUE(object.CreateFrom(Answer()));
  Attempt attempt({});
  std::size_t count = 0;
  attempt([&] { count = object.GetPropertyStringArrayValue(L"OpenFile").second.size(); });
  EXPECT_EQ(count, kPaths);
  EXPECT_LE(attempt.Count(), kPaths + 5);
}

TEST(JsonBudget, WritesAnObjectWithFewAllocations) {
  CJsonObject object;
  ASSERT_TRUE(object.CreateFrom(Answer()));
  Attempt attempt({});
  attempt([&] { EXPECT_GT(object.ToJson().size(), kPaths); });
  EXPECT_LT(attempt.Count(), 30u);
}

}  // namespace
