#include "base/utf8.h"

#include <cstddef>

namespace utf8 {
namespace {

constexpr char32_t kLastCodePoint = 0x10FFFF;

/// The first code point of a text that is not empty, and how many units it takes.
struct Decoded {
  char32_t code_point;
  std::size_t length;
};

template <class Unit>
Decoded DecodeWide(std::basic_string_view<Unit> text) {
  const auto unit = static_cast<char32_t>(text[0]);
  if (IsHighSurrogate(unit) && text.size() > 1) {
    const auto next = static_cast<char32_t>(text[1]);
    if (IsLowSurrogate(next)) return {Combine(unit, next), 2};
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

Decoded DecodeBytes(std::string_view text) {
  constexpr Decoded kInvalid{kReplacement, 1};
  const auto lead = static_cast<unsigned char>(text[0]);
  for (const Sequence& sequence : kSequences) {
    if ((lead & sequence.lead_mask) != sequence.lead) continue;
    if (text.size() < sequence.length) return kInvalid;
    char32_t code_point = lead & static_cast<unsigned char>(~sequence.lead_mask);
    for (std::size_t i = 1; i < sequence.length; ++i) {
      const auto byte = static_cast<unsigned char>(text[i]);
      if ((byte & 0xC0) != 0x80) return kInvalid;
      code_point = code_point << 6 | (byte & 0x3F);
    }
    const bool valid = code_point >= sequence.smallest && code_point <= kLastCodePoint &&
                       !IsHighSurrogate(code_point) && !IsLowSurrogate(code_point);
    return valid ? Decoded{code_point, sequence.length} : kInvalid;
  }
  return kInvalid;
}

template <class Unit>
void Append(std::basic_string<Unit>& text, char32_t code_point) {
  if (sizeof(Unit) == 2 && code_point >= 0x10000) {
    text += static_cast<Unit>(0xD800 + ((code_point - 0x10000) >> 10));
    text += static_cast<Unit>(0xDC00 + ((code_point - 0x10000) & 0x3FF));
  } else {
    text += static_cast<Unit>(code_point);
  }
}

}  // namespace

char* Write(char32_t code_point, char* to) noexcept {
  const auto put = [&to](char32_t byte) { *to++ = static_cast<char>(byte); };
  const auto put_continuation = [&](int shift) { put(0x80 | (code_point >> shift & 0x3F)); };
  if (code_point < 0x80) {
    put(code_point);
  } else if (code_point < 0x800) {
    put(0xC0 | code_point >> 6);
    put_continuation(0);
  } else if (code_point < 0x10000) {
    put(0xE0 | code_point >> 12);
    put_continuation(6);
    put_continuation(0);
  } else {
    put(0xF0 | code_point >> 18);
    put_continuation(12);
    put_continuation(6);
    put_continuation(0);
  }
  return to;
}

template <class Unit>
std::string Encode(std::basic_string_view<Unit> text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const auto [code_point, length] = DecodeWide(text);
    char encoded[kMaximumBytes];
    bytes.append(encoded, Write(code_point, encoded));
    text.remove_prefix(length);
  }
  return bytes;
}

template <class Unit>
std::basic_string<Unit> Decode(std::string_view text) {
  std::basic_string<Unit> wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const auto [code_point, length] = DecodeBytes(text);
    Append(wide, code_point);
    text.remove_prefix(length);
  }
  return wide;
}

template std::string Encode(std::wstring_view text);
template std::string Encode(std::u16string_view text);
template std::wstring Decode(std::string_view text);
template std::u16string Decode(std::string_view text);

}  // namespace utf8
