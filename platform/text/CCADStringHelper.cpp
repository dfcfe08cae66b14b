#include "CCADStringHelper.h"

#include "CStringHelper.h"

std::wstring CCADStringHelper::CComBSTR2WString(BSTR text) { return CStringHelper::CComBSTR2WString(text); }

std::wstring CCADStringHelper::ToLower(std::wstring_view text) { return CStringHelper::ToLower(text); }

int CCADStringHelper::StringCompare(std::wstring_view a, std::wstring_view b, bool caseSensitive) {
  return CStringHelper::StringCompare(a, b, caseSensitive);
}
