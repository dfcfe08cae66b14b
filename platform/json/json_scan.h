/// @file What must be known of a JSON text before RapidJSON reads it.
#pragma once

#include <cstddef>
#include <string_view>

/// Marks of a text that RapidJSON would read wrongly. Of a malformed text they are right up to its first
/// fault.
struct JsonScan {
  /// The place of the first escaped low surrogate without a high one before it, which the parser accepts;
  /// std::string_view::npos if there is none.
  std::size_t lone_low_surrogate = std::string_view::npos;
  /// Whether a number has many digits or a large exponent.
  bool has_extreme_number = false;
};

/// Reads `text` once, faster than a parser does.
JsonScan ScanJson(std::string_view text);

/// A number of as many characters, or with an exponent of as many digits, is read without RapidJSON, which
/// refuses some that fit into a double (such as 0e309) and computes with overflowing exponents.
inline constexpr std::size_t kManyCharacters = 300;
inline constexpr std::size_t kLargeExponentDigits = 3;
