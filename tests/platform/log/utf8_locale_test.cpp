#include "utf8_locale.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "temp_folder.h"

namespace {
using Encoder = std::codecvt<wchar_t, char, std::mbstate_t>;

struct Case {
  std::wstring text;
  std::string bytes;
};

const std::string kReplacement = "\xEF\xBF\xBD";

const Case kCases[] = {
    {L"", ""},
    {L"plain", "plain"},
    {L"\x7F\x80\x7FF\x800\xD7FF\xE000\xFFFF",
     "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
    {L"图纸", "\xE5\x9B\xBE\xE7\xBA\xB8"},
    {L"\xD800\xDC00\xDBFF\xDFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
    {L"a\xD83D\xDD29z", "a\xF0\x9F\x94\xA9z"},
    {L"a\xD83Dz", "a" + kReplacement + "z"},
    {L"a\xDD29z", "a" + kReplacement + "z"},
    {L"a\xD83D", "a" + kReplacement},
    {L"\xD83D\xD83D\xDD29", kReplacement + "\xF0\x9F\x94\xA9"},
    {L"\xDD29\xD83D", kReplacement + kReplacement},
    {std::wstring(L"a\0z", 3), std::string("a\0z", 3)},
};

// Encodes `pieces` one after the other like a stream, then ends the text.
std::string Encode(std::initializer_list<std::wstring_view> pieces) {
  const std::locale locale = Utf8Locale();
  const auto& encoder = std::use_facet<Encoder>(locale);
  std::mbstate_t state{};
  std::string bytes;
  char buffer[256];
  char* end = buffer;
  for (const std::wstring_view piece : pieces) {
    const wchar_t* next = nullptr;
    EXPECT_EQ(
        encoder.out(state, piece.data(), piece.data() + piece.size(), next, buffer, std::end(buffer), end),
        std::codecvt_base::ok);
    EXPECT_EQ(next, piece.data() + piece.size());
    bytes.append(buffer, end);
  }
  encoder.unshift(state, buffer, std::end(buffer), end);
  return bytes.append(buffer, end);
}

TEST(Utf8Locale, EncodesWholeTexts) {
  for (const Case& test : kCases) EXPECT_EQ(Encode({test.text}), test.bytes);
}

TEST(Utf8Locale, EncodesTextsThatAreSplitAnywhere) {
  for (const Case& test : kCases) {
    const std::wstring_view text = test.text;
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
      EXPECT_EQ(Encode({text.substr(0, cut), text.substr(cut)}), test.bytes) << "cut at " << cut;
    }
  }
}

TEST(Utf8Locale, ContinuesAfterAFullBuffer) {
  const std::locale locale = Utf8Locale();
  const auto& encoder = std::use_facet<Encoder>(locale);
  const std::wstring text = L"图\xD83D\xDD29\xD83D";
  std::mbstate_t state{};
  std::string bytes;
  const wchar_t* next = text.data();
  const wchar_t* const end = text.data() + text.size();
  int rounds = 0;
  for (; next != end && rounds < 10; ++rounds) {
    char buffer[6];
    char* written = buffer;
    const auto result = encoder.out(state, next, end, next, buffer, std::end(buffer), written);
    EXPECT_EQ(result, next == end ? std::codecvt_base::ok : std::codecvt_base::partial);
    bytes.append(buffer, written);
  }
  EXPECT_GT(rounds, 1);
  EXPECT_EQ(bytes, "\xE5\x9B\xBE\xF0\x9F\x94\xA9");
}

TEST(Utf8Locale, KeepsAStreamGoodForEveryCharacter) {
  const TempFolder temp;
  std::wstring text;
  for (int i = 0; i < 100'000; ++i) text += static_cast<wchar_t>(i);  // every code unit, also lone surrogates
  for (int i = 0; i < 100'000; ++i) text += L"\xD83D\xDD29";
  std::wofstream stream;
  stream.imbue(Utf8Locale());
  stream.open(temp.Path(L"all").c_str(), std::ios::binary);
  stream << text << std::flush;
  EXPECT_TRUE(stream.good());
  stream.close();

  // The tests above check single characters. This one checks that nothing is lost at the end of a buffer.
  const std::string bytes = temp.Read(L"all");
  std::size_t bolts = 0;
  for (std::size_t at = 0; (at = bytes.find("\xF0\x9F\x94\xA9", at)) != std::string::npos; at += 4) ++bolts;
  EXPECT_EQ(bolts, 100'000u);
  EXPECT_TRUE(bytes.ends_with("\xF0\x9F\x94\xA9"));
}
}  // namespace
