/// @file Text conversion and comparison.
#pragma once

#include <string>
#include <string_view>

#ifdef _WIN32
#include "CComBSTR.h"
#endif

class CStringHelper {
 public:
  /// UTF-16 (UTF-32 if wchar_t has 32 bits) to UTF-8. A lone surrogate becomes U+FFFD.
  static std::string UnicodeToUTF8(std::wstring_view text);

  /// UTF-8 to wide. Every byte that is not part of a valid sequence becomes U+FFFD.
  static std::wstring UTF8ToUnicode(std::string_view text);

#ifdef _WIN32
  /// @throws _com_error E_OUTOFMEMORY.
  static CComBSTR String2CComBSTR(std::wstring_view text);

  /// The characters of `text`, embedded nulls included; the empty string for a null BSTR.
  static std::wstring CComBSTR2WString(BSTR text);

  /// The first position of `pattern` in `text`, ignoring case (ordinal, as file names are compared);
  /// std::wstring::npos if it is not found.
  static std::size_t FindStringNoCase(std::wstring_view text, std::wstring_view pattern);

  /// A copy in lower case, by the rules of the invariant locale.
  static std::wstring ToLower(std::wstring_view text);

  /// Compares by code units: negative if `a` sorts before `b`, 0 if they are equal, else positive. If
  /// `caseSensitive` is false, ignores case as file names are compared.
  static int StringCompare(std::wstring_view a, std::wstring_view b, bool caseSensitive);
#endif
};
