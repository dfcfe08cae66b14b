/// @file Conversion between UTF-8 and wide strings.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace utf8 {

/// Replaces everything that cannot be converted.
inline constexpr char32_t kReplacement = 0xFFFD;

/// The largest number of bytes that one code point takes.
inline constexpr int kMaximumBytes = 4;

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The code point of a pair of surrogates.
constexpr char32_t Combine(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// Writes `code_point`, which is valid, to `to`, which has room for kMaximumBytes bytes.
/// @return the end of what was written.
char* Write(char32_t code_point, char* to) noexcept;

/// `text` as UTF-8. The text is UTF-16, or UTF-32 if its units have 32 bits. A lone surrogate becomes U+FFFD.
template <class Unit>
std::string Encode(std::basic_string_view<Unit> text);

/// Writes `text` as Encode does to `to`, which has room for kMaximumBytes bytes for each unit.
/// @return the number of bytes written.
template <class Unit>
std::size_t EncodeTo(std::basic_string_view<Unit> text, char* to);

/// UTF-8 as UTF-16, or as UTF-32 if the units have 32 bits. Every byte that is not part of a valid
/// sequence becomes U+FFFD.
template <class Unit>
std::basic_string<Unit> Decode(std::string_view text);

/// The position of the first byte of `text` that is not part of a valid sequence; std::string_view::npos if
/// there is none.
std::size_t FindInvalid(std::string_view text);

extern template std::size_t EncodeTo(std::wstring_view text, char* to);
extern template std::size_t EncodeTo(std::u16string_view text, char* to);
extern template std::string Encode(std::wstring_view text);
extern template std::string Encode(std::u16string_view text);
extern template std::wstring Decode(std::string_view text);
extern template std::u16string Decode(std::string_view text);

}  // namespace utf8
