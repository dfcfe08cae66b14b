/// @file Text helpers of the CAD library; the same rules as CStringHelper.
#pragma once

#include <string>
#include <string_view>

#include "CComBSTR.h"

class CCADStringHelper {
 public:
  /// See CStringHelper::CComBSTR2WString.
  static std::wstring CComBSTR2WString(BSTR text);

  /// See CStringHelper::ToLower.
  static std::wstring ToLower(std::wstring_view text);

  /// See CStringHelper::StringCompare.
  static int StringCompare(std::wstring_view a, std::wstring_view b, bool caseSensitive);
};
