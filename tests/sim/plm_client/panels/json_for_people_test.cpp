#include "panels/json_for_people.h"

#include <gtest/gtest.h>

using namespace plm_panels;

namespace {

TEST(FaultOfAnswer, IsNoneForAnObjectAndForNoAnswer) {
  EXPECT_FALSE(FaultOfAnswer(L"").has_value());
  EXPECT_FALSE(FaultOfAnswer(L"{}").has_value());
  EXPECT_FALSE(FaultOfAnswer(L"{\r\n  \"\u652f\u67b6\": [1, true]\r\n}").has_value());
}

TEST(FaultOfAnswer, NamesLineColumnAndPlaceInTheText) {
  const std::wstring text = L"{\r\n  \"a\": 1,\r\n  \"\u652f\u67b6\": x\r\n}";
  const auto fault = FaultOfAnswer(text);
  ASSERT_TRUE(fault.has_value());
  EXPECT_EQ(fault->line, 3u);
  EXPECT_EQ(fault->column, 9u);
  EXPECT_EQ(fault->offset, text.find(L'x'));
  EXPECT_TRUE(fault->Description().starts_with(L"line 3, column 9: "))
      << testing::PrintToString(fault->Description());
}

TEST(FaultOfAnswer, IsTheEndWhereSomethingIsMissing) {
  const auto fault = FaultOfAnswer(L"{\"a\": 1");
  ASSERT_TRUE(fault.has_value());
  EXPECT_EQ(fault->offset, 7u);
  EXPECT_TRUE(FaultOfAnswer(L"{} {}").has_value());
}

TEST(FaultOfAnswer, IsAValueThatIsNoObject) {
  for (const wchar_t* const text : {L"[]", L"5", L"\"x\"", L"null"}) {
    const auto fault = FaultOfAnswer(text);
    ASSERT_TRUE(fault.has_value()) << testing::PrintToString(text);
    EXPECT_EQ(fault->Description(), L"line 1, column 1: the answer is no JSON object");
  }
}

TEST(ForReading, PutsEachMemberOnALineOfItsOwn) {
  EXPECT_EQ(ForReading(R"({"a":"ü","b":[1]})"), L"{\n  \"a\": \"\u00fc\",\n  \"b\": [\n    1\n  ]\n}");
  EXPECT_EQ(ForReading(""), L"");
  EXPECT_EQ(ForReading("{no json"), L"{no json");
}

}  // namespace
