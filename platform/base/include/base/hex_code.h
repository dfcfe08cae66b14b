/// @file Result codes as text.
#pragma once

#include <cwchar>
#include <iterator>
#include <string>

/// `code` as "0x" and eight lower-case hexadecimal digits.
inline std::wstring HexCode(long code) {
  wchar_t digits[16] = {};
  std::swprintf(digits, std::size(digits), L"0x%08lx", static_cast<unsigned long>(code));
  return digits;
}
