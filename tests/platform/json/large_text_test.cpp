// Texts as long as the longest answer of the PLM client. Not built with the sanitizers, because that takes
// minutes.
#include "json_test_support.h"

namespace {

constexpr std::size_t kLargeText = 64 * 1024 * 1024;

TEST(LargeTexts, OfOneStringAreParsed) {
  CJsonObject json;
  const std::wstring value(kLargeText - 8, L'\u96f6');
  EXPECT_TRUE(json.CreateFrom(L"{\"a\":\"" + value + L"\"}"));
  EXPECT_TRUE(json.GetStringValue(L"a") == value);
  EXPECT_EQ(json.ToJson().size(), kLargeText);
}

TEST(LargeTexts, OfManyValuesAreParsed) {
  std::wstring text = L"[";
  while (text.size() < kLargeText - 9) text += L"\"abcdef\",";
  text += L"0]";
  EXPECT_TRUE(Parse(text)->ToJson() == text);
}

TEST(LargeTexts, ThatAreMalformedAreRefused) {
  CJsonObject json;
  for (const wchar_t character : {L'[', L' ', L'"', L'\0', L'\xDC00'}) {
    EXPECT_FALSE(json.CreateFrom(std::wstring(kLargeText, character)));
    EXPECT_EQ(json.ToJson(), L"{}");
  }
  EXPECT_FALSE(json.CreateFrom(L"\"" + std::wstring(kLargeText, L'a')));
}

}  // namespace
