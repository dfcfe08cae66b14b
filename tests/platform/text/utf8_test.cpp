// UTF-8 and wide strings. UTF-16 is tested even if wchar_t has more than 16 bits.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "CStringHelper.h"
#include "base/utf8.h"

using namespace std::string_literals;

namespace {

constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";

struct Pair {
  const char* name;
  std::wstring wide;
  std::string utf8;
};

/// Converts to UTF-16, whatever the size of wchar_t.
std::u16string Utf16(std::wstring_view wide) {
  std::u16string units;
  for (const wchar_t character : wide) {
    const auto code_point = static_cast<char32_t>(character);
    if (code_point > 0xFFFF) {
      units += static_cast<char16_t>(0xD7C0 + (code_point >> 10));
      units += static_cast<char16_t>(0xDC00 | (code_point & 0x3FF));
    } else {
      units += static_cast<char16_t>(code_point);
    }
  }
  return units;
}

/// Converts from wchar_t and from UTF-16. Both results must be equal.
std::string Encode(std::wstring_view wide) {
  const std::string utf8 = CStringHelper::UnicodeToUTF8(wide);
  EXPECT_TRUE(utf8::Encode<char16_t>(Utf16(wide)) == utf8);
  return utf8;
}

std::wstring Decode(std::string_view bytes) {
  const std::wstring wide = CStringHelper::UTF8ToUnicode(bytes);
  EXPECT_TRUE(utf8::Decode<char16_t>(bytes) == Utf16(wide));
  return wide;
}

void PrintTo(const Pair& pair, std::ostream* out) { *out << pair.name; }

const Pair kPairs[] = {
    {"nothing", L"", ""},
    {"ascii", L"Part1.SLDPRT", "Part1.SLDPRT"},
    {"last_of_one_byte", L"\x7f", "\x7f"},
    {"first_of_two_bytes", L"\u0080", "\xC2\x80"},
    {"umlaut", L"\u00fc", "\xC3\xBC"},
    {"last_of_two_bytes", L"\u07ff", "\xDF\xBF"},
    {"first_of_three_bytes", L"\u0800", "\xE0\xA0\x80"},
    {"chinese", L"\u96f6\u4ef6", "\xE9\x9B\xB6\xE4\xBB\xB6"},
    {"before_surrogates", L"\ud7ff", "\xED\x9F\xBF"},
    {"after_surrogates", L"\ue000", "\xEE\x80\x80"},
    {"last_of_three_bytes", L"\uffff", "\xEF\xBF\xBF"},
    {"first_of_four_bytes", L"\U00010000", "\xF0\x90\x80\x80"},
    {"emoji", L"a\U0001F600b", "a\xF0\x9F\x98\x80"s + "b"},
    {"last_code_point", L"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
    {"nulls", L"a\0b\0"s, "a\0b\0"s},
};

class Utf8Pairs : public testing::TestWithParam<Pair> {};

TEST_P(Utf8Pairs, ConvertBothWays) {
  EXPECT_EQ(Encode(GetParam().wide), GetParam().utf8);
  EXPECT_EQ(Decode(GetParam().utf8), GetParam().wide);
}

std::string NameOf(const testing::TestParamInfo<Pair>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, Utf8Pairs, testing::ValuesIn(kPairs), NameOf);

/// Every code point that is a character, in UTF-32.
std::u32string AllCodePoints() {
  std::u32string all;
  for (char32_t code_point = 0; code_point <= 0x10FFFF; ++code_point) {
    if (code_point < 0xD800 || code_point > 0xDFFF) all += code_point;
  }
  return all;
}

std::wstring Widen(std::u32string_view text) {
  std::wstring wide;
  for (const char32_t code_point : text) {
    if (sizeof(wchar_t) == 2 && code_point > 0xFFFF) {
      wide += static_cast<wchar_t>(0xD7C0 + (code_point >> 10));
      wide += static_cast<wchar_t>(0xDC00 | (code_point & 0x3FF));
    } else {
      wide += static_cast<wchar_t>(code_point);
    }
  }
  return wide;
}

TEST(Utf8, EveryCodePointIsConvertedBothWays) {
  const std::wstring all = Widen(AllCodePoints());
  const std::string utf8 = Encode(all);
  EXPECT_EQ(utf8.size(), 0x80 + 2 * 0x780 + 3 * (0xF800 - 0x800) + 4 * 0x100000);
  EXPECT_TRUE(Decode(utf8) == all);
}

TEST(Utf8, LoneSurrogatesBecomeReplacementCharacters) {
  const std::string replaced(kReplacementUtf8);
  EXPECT_EQ(Encode(L"\xD800"), replaced);
  EXPECT_EQ(Encode(L"\xDFFF"), replaced);
  EXPECT_EQ(Encode(L"a\xDBFF"), "a" + replaced);
  EXPECT_EQ(Encode(L"\xDC00z"), replaced + "z");
  EXPECT_EQ(Encode(L"\xD83D-\xDE00"), replaced + "-" + replaced);
  EXPECT_EQ(Encode(L"\xDE00\xD83D"), replaced + replaced);
  EXPECT_EQ(Encode(L"\xD83D\xD83D\xDE00"), replaced + "\xF0\x9F\x98\x80");
}

TEST(Utf8, NothingIsReadBeyondTheEnd) {
  EXPECT_EQ(Decode(std::string_view("\xE4\xBB\xB6", 2)), L"\ufffd\ufffd");
  EXPECT_EQ(Encode(std::wstring_view(L"\xD83D\xDE00", 1)), kReplacementUtf8);
}

#ifndef _WIN32
TEST(Utf8, WideCharactersBeyondTheLastCodePointBecomeReplacementCharacters) {
  EXPECT_EQ(CStringHelper::UnicodeToUTF8(std::wstring(1, wchar_t{0x110000})), kReplacementUtf8);
  EXPECT_EQ(CStringHelper::UnicodeToUTF8(std::wstring(1, wchar_t{-1})), kReplacementUtf8);
}
#endif

struct Invalid {
  const char* name;
  std::string utf8;
  std::wstring wide;
};

void PrintTo(const Invalid& invalid, std::ostream* out) { *out << invalid.name; }

const Invalid kInvalid[] = {
    {"lone_continuation", "a\x80z", L"a\ufffdz"},
    {"last_continuation", "\xBF", L"\ufffd"},
    {"overlong_null", "\xC0\x80", L"\ufffd\ufffd"},
    {"overlong_slash", "\xC1\xAF", L"\ufffd\ufffd"},
    {"overlong_of_three", "\xE0\x9F\xBF", L"\ufffd\ufffd\ufffd"},
    {"overlong_of_four", "\xF0\x8F\xBF\xBF", L"\ufffd\ufffd\ufffd\ufffd"},
    {"surrogate", "\xED\xA0\x80", L"\ufffd\ufffd\ufffd"},
    {"surrogate_pair", "\xED\xA0\xBD\xED\xB8\x80", L"\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd"},
    {"beyond_last", "\xF4\x90\x80\x80", L"\ufffd\ufffd\ufffd\ufffd"},
    {"lead_of_five", "\xF8\x88\x80\x80\x80", L"\ufffd\ufffd\ufffd\ufffd\ufffd"},
    {"never_used", "\xFE\xFF", L"\ufffd\ufffd"},
    {"cut_off_two", "x\xC3", L"x\ufffd"},
    {"cut_off_three", "\xE4\xBB", L"\ufffd\ufffd"},
    {"cut_off_four", "\xF0\x9F\x98", L"\ufffd\ufffd\ufffd"},
    {"broken_by_ascii", "\xE4\xBBz", L"\ufffd\ufffdz"},
    {"broken_by_next", "\xE4\xBB\xE4\xBB\xB6", L"\ufffd\ufffd\u4ef6"},
    {"latin_1", "M\xFCller", L"M\ufffdller"},
};

class InvalidUtf8 : public testing::TestWithParam<Invalid> {};

TEST_P(InvalidUtf8, BecomesOneReplacementCharacterPerByte) {
  EXPECT_EQ(Decode(GetParam().utf8), GetParam().wide);
}

std::string NameOfInvalid(const testing::TestParamInfo<Invalid>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(, InvalidUtf8, testing::ValuesIn(kInvalid), NameOfInvalid);

/// Texts go in blocks where they can: whatever stands before and behind a sequence must not matter.
TEST(Utf8, IsConvertedAlikeAtEveryPlaceInALongText) {
  const std::size_t lengths[] = {0, 1, 2, 3, 13, 14, 15, 16, 17, 30, 31, 32, 33};
  for (const std::size_t before : lengths) {
    for (const std::size_t behind : lengths) {
      const std::wstring begin(before, L'b');
      const std::wstring end(behind, L'e');
      const auto around = [&](const std::string& bytes) {
        return std::string(before, 'b') + bytes + std::string(behind, 'e');
      };
      for (const Pair& pair : kPairs) {
        EXPECT_TRUE(Encode(begin + pair.wide + end) == around(pair.utf8)) << pair.name << before << behind;
        EXPECT_TRUE(Decode(around(pair.utf8)) == begin + pair.wide + end) << pair.name << before << behind;
        EXPECT_EQ(utf8::FindInvalid(around(pair.utf8)), std::string_view::npos) << pair.name;
      }
      for (const Invalid& invalid : kInvalid) {
        EXPECT_TRUE(Decode(around(invalid.utf8)) == begin + invalid.wide + end)
            << invalid.name << before << behind;
        EXPECT_EQ(utf8::FindInvalid(around(invalid.utf8)), before + invalid.wide.find(L'\ufffd'))
            << invalid.name;
      }
    }
  }
}

}  // namespace
