#include "CStringHelper.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The code point at the start of `text`, which is not empty, and how many characters it takes.
struct Decoded {
  char32_t code_point;
  std::size_t length;
};

Decoded DecodeWide(std::wstring_view text) {
  const auto unit = static_cast<char32_t>(text[0]);
  if (IsHighSurrogate(unit) && text.size() > 1) {
    const auto next = static_cast<char32_t>(text[1]);
    if (IsLowSurrogate(next)) return {0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00), 2};
  }
  const bool valid = !IsHighSurrogate(unit) && !IsLowSurrogate(unit) && unit <= kLastCodePoint;
  return {valid ? unit : kReplacement, 1};
}

/// How a sequence of UTF-8 begins: its lead bytes, its length and the smallest code point that needs it.
struct Sequence {
  unsigned char lead_mask;
  unsigned char lead;
  std::size_t length;
  char32_t smallest;
};

constexpr Sequence kSequences[] = {
    {0x80, 0x00, 1, 0x0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

Decoded DecodeUtf8(std::string_view text) {
  constexpr Decoded invalid{kReplacement, 1};
  const auto lead = static_cast<unsigned char>(text[0]);
  for (const Sequence& sequence : kSequences) {
    if ((lead & sequence.lead_mask) != sequence.lead) continue;
    if (text.size() < sequence.length) return invalid;
    char32_t code_point = lead & static_cast<unsigned char>(~sequence.lead_mask);
    for (std::size_t i = 1; i < sequence.length; ++i) {
      const auto byte = static_cast<unsigned char>(text[i]);
      if ((byte & 0xC0) != 0x80) return invalid;
      code_point = code_point << 6 | (byte & 0x3F);
    }
    const bool valid = code_point >= sequence.smallest && code_point <= kLastCodePoint &&
                       !IsHighSurrogate(code_point) && !IsLowSurrogate(code_point);
    return valid ? Decoded{code_point, sequence.length} : invalid;
  }
  return invalid;
}

void AppendUtf8(std::string& text, char32_t code_point) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
  const auto append_tail = [&](int shift) { append(0x80 | (code_point >> shift & 0x3F)); };
  if (code_point < 0x80) {
    append(code_point);
  } else if (code_point < 0x800) {
    append(0xC0 | code_point >> 6);
    append_tail(0);
  } else if (code_point < 0x10000) {
    append(0xE0 | code_point >> 12);
    append_tail(6);
    append_tail(0);
  } else {
    append(0xF0 | code_point >> 18);
    append_tail(12);
    append_tail(6);
    append_tail(0);
  }
}

void AppendWide(std::wstring& text, char32_t code_point) {
  if (sizeof(wchar_t) == 2 && code_point >= 0x10000) {
    text += static_cast<wchar_t>(0xD800 + ((code_point - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((code_point - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(code_point);
  }
}

}  // namespace

std::string CStringHelper::UnicodeToUTF8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  while (!text.empty()) {
    const auto [code_point, length] = DecodeWide(text);
    AppendUtf8(utf8, code_point);
    text.remove_prefix(length);
  }
  return utf8;
}

std::wstring CStringHelper::UTF8ToUnicode(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const auto [code_point, length] = DecodeUtf8(text);
    AppendWide(wide, code_point);
    text.remove_prefix(length);
  }
  return wide;
}
