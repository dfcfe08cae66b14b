#include "string_table.h"

#include <algorithm>
#include <string_view>

#include "module_state.h"

namespace {

constexpr LANGID kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_UK);
constexpr LANGID kSimplifiedChinese = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED);
constexpr LANGID kTraditionalChinese = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_TRADITIONAL);

// A module stores its texts in blocks of sixteen. Before each text is its length, 0 for a missing text.
constexpr unsigned kBlockSize = 16;

// Instead of LoadString, which has no parameter for the language. If no table matches the user's language, it
// takes the table with the lowest language id, which is traditional Chinese.
std::wstring Find(HINSTANCE module, unsigned id, LANGID language) {
  HRSRC block = FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(id / kBlockSize + 1), language);
  if (!block) return {};
  const auto* text = static_cast<const wchar_t*>(LockResource(LoadResource(module, block)));
  if (!text) return {};
  for (unsigned before = id % kBlockSize; before > 0; --before) text += 1 + *text;
  return std::wstring(text + 1, static_cast<std::size_t>(*text));
}

}  // namespace

LANGID StringTableLanguage(LANGID ui_language) noexcept {
  if (PRIMARYLANGID(ui_language) != LANG_CHINESE) return kEnglish;
  constexpr WORD kNeutralTraditional = 0x1F;
  constexpr WORD kTraditional[] = {SUBLANG_CHINESE_TRADITIONAL, SUBLANG_CHINESE_HONGKONG,
                                   SUBLANG_CHINESE_MACAU, kNeutralTraditional};
  const bool is_traditional = std::ranges::count(kTraditional, SUBLANGID(ui_language)) != 0;
  return is_traditional ? kTraditionalChinese : kSimplifiedChinese;
}

std::wstring LoadResourceString(HINSTANCE module, unsigned id) {
  const std::wstring text = Find(module, id, StringTableLanguage(GetThreadUILanguage()));
  return text.empty() ? Find(module, id, kEnglish) : text;
}

std::wstring LoadResourceString(unsigned id) { return LoadResourceString(ModuleState::ResourceModule(), id); }

std::wstring LoadResourceString(unsigned id, LANGID language) {
  return Find(ModuleState::ResourceModule(), id, language);
}
