// Texts in the language of the user.
#include "window/texts.h"

#include <gtest/gtest.h>

namespace {

using window::Texts;

// In strings.rc.
constexpr unsigned kTranslated = 1;
constexpr unsigned kWithValue = 17;
constexpr unsigned kEnglishOnly = 18;
constexpr unsigned kMissing = 99;

TEST(TextsTest, AreInTheLanguageThatWasAskedFor) {
  EXPECT_EQ(Texts(window::kEnglish)(kTranslated), L"Bolt");
  EXPECT_EQ(Texts(window::kSimplifiedChinese)(kTranslated), L"螺栓");
  EXPECT_EQ(Texts(window::kTraditionalChinese)(kTranslated), L"螺栓(繁)");
}

TEST(TextsTest, ATextThatTheLanguageLacksIsInEnglish) {
  EXPECT_EQ(Texts(window::kSimplifiedChinese)(kEnglishOnly), L"Nut");
  EXPECT_EQ(Texts(window::kSimplifiedChinese)(kMissing), L"");
}

TEST(TextsTest, AValueTakesThePlaceOfEachPlaceholder) {
  EXPECT_EQ(Texts(window::kEnglish)(kWithValue, L"%1 M8"), L"The bolt \"%1 M8\" is not %1 M8");
}

TEST(TextsTest, LanguagesHaveNames) {
  EXPECT_EQ(window::LanguageNamed(L"en"), window::kEnglish);
  EXPECT_EQ(window::LanguageNamed(L"zh-CN"), window::kSimplifiedChinese);
  EXPECT_EQ(window::LanguageNamed(L"zh-TW"), window::kTraditionalChinese);
  EXPECT_EQ(window::LanguageNamed(L"zh"), std::nullopt);
}

TEST(TextsTest, ALanguageIsUsedByTheThreadsUserInterface) {
  const LANGID before = GetThreadUILanguage();
  for (const LANGID language : {window::kSimplifiedChinese, window::kTraditionalChinese, window::kEnglish}) {
    EXPECT_TRUE(window::UseLanguage(language));
    EXPECT_EQ(GetThreadUILanguage(), language);
  }
  window::UseLanguage(before);
}

}  // namespace
