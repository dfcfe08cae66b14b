#include "search_words.h"

namespace plm_vault {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n\u3000";  // the last is the wide blank of Chinese texts

std::wstring Pattern(std::wstring_view word) {
  std::wstring pattern = L"%";
  for (const wchar_t character : word) {
    if (character == L'%' || character == L'_' || character == L'\\') pattern += L'\\';
    pattern += character;
  }
  return pattern + L"%";
}

}  // namespace

std::vector<std::wstring> SearchPatterns(std::wstring_view text) {
  std::vector<std::wstring> patterns;
  std::size_t start = text.find_first_not_of(kBlanks);
  while (start != std::wstring_view::npos) {
    const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
    patterns.push_back(Pattern(text.substr(start, end - start)));
    start = text.find_first_not_of(kBlanks, end);
  }
  return patterns;
}

std::string SearchCondition(const std::string& expression, std::size_t count) {
  std::string condition = "1";
  for (std::size_t i = 0; i < count; ++i) condition += " AND (" + expression + ") LIKE ? ESCAPE '\\'";
  return condition;
}

}  // namespace plm_vault
