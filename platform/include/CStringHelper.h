/// @file Text conversion and comparison.
#pragma once

#include <string>
#include <string_view>

#ifdef _WIN32
#include "CComBSTR.h"
#endif

class CStringHelper {
 public:
  /// UTF-16 (where wchar_t has 16 bits, else UTF-32) to UTF-8. A lone surrogate becomes U+FFFD.
  static std::string UnicodeToUTF8(std::wstring_view text);

  /// UTF-8 to wide. Every byte that is part of no valid sequence becomes U+FFFD.
  static std::wstring UTF8ToUnicode(std::string_view text);

#ifdef _WIN32
  /// @throws _com_error E_OUTOFMEMORY.
  static CComBSTR String2CComBSTR(std::wstring_view text);

  /// The characters of `text`, embedded nulls included; the empty string for a null BSTR.
  static std::wstring CComBSTR2WString(BSTR text);

  /// Where `pattern` first occurs in `text` without regard to case (ordinal, as file names compare), or
  /// std::wstring::npos.
  static std::size_t FindStringNoCase(std::wstring_view text, std::wstring_view pattern);

  /// A copy in lower case, by the invariant locale.
  static std::wstring ToLower(std::wstring_view text);

  /// Negative, 0 or positive as `a` sorts before, is equal to or sorts after `b`, ordinally; without
  /// regard to case, as file names compare, where `caseSensitive` is false.
  static int StringCompare(std::wstring_view a, std::wstring_view b, bool caseSensitive);
#endif
};
