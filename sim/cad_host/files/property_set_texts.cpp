#include "property_set_texts.h"

#include <cerrno>
#include <cmath>
#include <cwchar>

#include "paths.h"
#include "property_set_format.h"

namespace cad_host {

std::optional<LONG> WholeNumberOf(const std::wstring& text) {
  wchar_t* end = nullptr;
  errno = 0;
  const LONG number = std::wcstol(text.c_str(), &end, 10);
  if (text.empty() || *end || errno == ERANGE) return std::nullopt;
  return number;
}

std::optional<double> FractionOf(const std::wstring& text) {
  wchar_t* end = nullptr;
  const double number = std::wcstod(text.c_str(), &end);
  if (text.empty() || *end || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<bool> YesOrNoOf(const std::wstring& text) {
  if (SameName(text, property_set::kYes)) return true;
  if (SameName(text, property_set::kNo)) return false;
  return std::nullopt;
}

std::optional<FILETIME> DateOf(const std::wstring& text) {
  SYSTEMTIME time{};
  wchar_t rest = 0;
  if (std::swscanf(text.c_str(), L"%4hu-%2hu-%2hu%c", &time.wYear, &time.wMonth, &time.wDay, &rest) != 3) {
    return std::nullopt;
  }
  FILETIME date{};
  if (!SystemTimeToFileTime(&time, &date)) return std::nullopt;
  return date;
}

}  // namespace cad_host
