#include "similar_name.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace {

constexpr std::size_t kMostDifferences = 2;

wchar_t LowerCase(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c | 0x20) : c; }

/// How many characters must be added, removed or replaced to make `a` of `b`, without regard to case.
std::size_t Differences(std::wstring_view a, std::wstring_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (LowerCase(a[i]) == LowerCase(b[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::wstring_view FindSimilarName(std::wstring_view name, std::span<const std::wstring_view> known) {
  if (std::ranges::find(known, name) != known.end()) return {};
  std::wstring_view best;
  std::size_t fewest = kMostDifferences + 1;
  for (const std::wstring_view candidate : known) {
    const std::size_t differences = Differences(name, candidate);
    if (differences < fewest && 2 * differences < candidate.size()) {
      fewest = differences;
      best = candidate;
    }
  }
  return best;
}

namespace {

std::wstring Slip(const std::wstring& place, const std::wstring& name, std::wstring_view meant) {
  return place + L"\"" + name + L"\" is not known; \"" + std::wstring(meant) + L"\" is";
}

}  // namespace

void AddSimilarNames(std::vector<std::wstring>& slips, const std::wstring& place, const CJsonObject& object,
                     std::span<const std::wstring_view> known) {
  if (!object.Share()->IsObject()) return;
  for (const auto& member : object.Share()->GetObject()) {
    const std::wstring name =
        CStringHelper::UTF8ToUnicode({member.name.GetString(), member.name.GetStringLength()});
    const std::wstring_view meant = FindSimilarName(name, known);
    if (!meant.empty()) slips.push_back(Slip(place, name, meant));
  }
}
