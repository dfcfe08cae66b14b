#include "similar_name.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr std::wstring_view kKnown[] = {L"name", L"CallbackFunction", L"Hint", L"pipe"};

std::wstring_view Meant(std::wstring_view name) { return FindSimilarName(name, kKnown); }

TEST(SimilarName, DiffersInCaseOrInOneOrTwoCharacters) {
  EXPECT_EQ(Meant(L"CallBackFunction"), L"CallbackFunction");
  EXPECT_EQ(Meant(L"CallbackFuncton"), L"CallbackFunction");
  EXPECT_EQ(Meant(L"CallbackFunktions"), L"CallbackFunction");
  EXPECT_EQ(Meant(L"Name"), L"name");
  EXPECT_EQ(Meant(L"pip"), L"pipe");
  EXPECT_EQ(Meant(L"Hnit"), L"");  // two of four characters: half of the name
}

TEST(SimilarName, IsNoneForAKnownName) {
  EXPECT_EQ(Meant(L"name"), L"");
  EXPECT_EQ(FindSimilarName(L"Hint", std::array<std::wstring_view, 2>{L"hint", L"Hint"}), L"");
}

TEST(SimilarName, IsNoneForANameOfItsOwn) {
  EXPECT_EQ(Meant(L"remarks"), L"");
  EXPECT_EQ(Meant(L""), L"");
  EXPECT_EQ(Meant(L"Function"), L"");
}

TEST(SimilarName, IsTheNearestOfSeveral) {
  EXPECT_EQ(FindSimilarName(L"Functions", std::array<std::wstring_view, 2>{L"Funktion", L"Function"}),
            L"Function");
}

}  // namespace
