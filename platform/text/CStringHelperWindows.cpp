// The functions of CStringHelper that need Windows: its strings and its rules for case.
#include <windows.h>

#include "CStringHelper.h"

namespace {

// The system's functions take lengths as int and do not accept null pointers.
int Length(std::wstring_view text) { return static_cast<int>(text.size()); }
const wchar_t* Data(std::wstring_view text) { return text.empty() ? L"" : text.data(); }

}  // namespace

CComBSTR CStringHelper::String2CComBSTR(std::wstring_view text) { return CComBSTR(text); }

std::wstring CStringHelper::CComBSTR2WString(BSTR text) {
  return text ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

std::size_t CStringHelper::FindStringNoCase(std::wstring_view text, std::wstring_view pattern) {
  if (pattern.empty()) return 0;
  const int place =
      FindStringOrdinal(FIND_FROMSTART, Data(text), Length(text), Data(pattern), Length(pattern), TRUE);
  return place < 0 ? std::wstring::npos : static_cast<std::size_t>(place);
}

std::wstring CStringHelper::ToLower(std::wstring_view text) {
  std::wstring lower(text);
  if (!text.empty()) {
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, Data(text), Length(text), lower.data(),
                  Length(lower), nullptr, nullptr, 0);
  }
  return lower;
}

int CStringHelper::StringCompare(std::wstring_view a, std::wstring_view b, bool caseSensitive) {
  return CompareStringOrdinal(Data(a), Length(a), Data(b), Length(b), !caseSensitive) - CSTR_EQUAL;
}
