#include "property_set_texts.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cwchar>
#include <cwctype>
#include <string_view>

#include "property_set_format.h"

namespace cad_host {
namespace {

using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
constexpr auto kFirstDay = std::chrono::sys_days(std::chrono::year(1601) / 1 / 1);

bool IsWord(std::wstring_view text, std::wstring_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](wchar_t a, wchar_t b) { return std::towlower(a) == std::towlower(b); });
}

}  // namespace

std::optional<std::int64_t> WholeNumberOf(const std::wstring& text) {
  wchar_t* end = nullptr;
  errno = 0;
  const std::int64_t number = std::wcstoll(text.c_str(), &end, 10);
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
  if (IsWord(text, property_set::kYes)) return true;
  if (IsWord(text, property_set::kNo)) return false;
  return std::nullopt;
}

std::optional<std::uint64_t> DateOf(const std::wstring& text) {
  unsigned year = 0;
  unsigned month = 0;
  unsigned day = 0;
  wchar_t rest = 0;
  if (std::swscanf(text.c_str(), L"%4u-%2u-%2u%lc", &year, &month, &day, &rest) != 3) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (!date.ok() || std::chrono::sys_days(date) < kFirstDay) return std::nullopt;
  return static_cast<std::uint64_t>(Ticks(std::chrono::sys_days(date) - kFirstDay).count());
}

std::wstring DateText(std::uint64_t file_time) {
  std::chrono::year_month_day date{};
  if (file_time <= INT64_MAX) {
    date = kFirstDay + std::chrono::floor<std::chrono::days>(Ticks(static_cast<std::int64_t>(file_time)));
  }
  wchar_t text[16];
  std::swprintf(text, std::size(text), L"%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text;
}

}  // namespace cad_host
