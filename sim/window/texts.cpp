#include "window/texts.h"

namespace window {
namespace {

// A module stores its texts in blocks of sixteen. Before each text is its length, 0 for a missing text.
constexpr unsigned kBlockSize = 16;

constexpr std::wstring_view kPlaceholder = L"%1";

std::wstring Find(HINSTANCE module, unsigned id, LANGID language) {
  HRSRC block = FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(id / kBlockSize + 1), language);
  if (!block) return {};
  const auto* text = static_cast<const wchar_t*>(LockResource(LoadResource(module, block)));
  if (!text) return {};
  for (unsigned before = id % kBlockSize; before > 0; --before) text += 1 + *text;
  return {text + 1, static_cast<std::size_t>(*text)};
}

}  // namespace

std::optional<LANGID> LanguageNamed(std::wstring_view name) {
  if (name == L"en") return kEnglish;
  if (name == L"zh-CN") return kSimplifiedChinese;
  if (name == L"zh-TW") return kTraditionalChinese;
  return std::nullopt;
}

bool UseLanguage(LANGID language) {
  SetThreadUILanguage(language);
  if (GetThreadUILanguage() == language) return true;
  // Wine has one language for the whole process and sets it by another function, which in Windows would
  // change the user's own setting. Its own dialogs are in the language of the thread's locale.
  HMODULE system = GetModuleHandleW(L"ntdll.dll");
  if (!GetProcAddress(system, "wine_get_version")) return false;
  FARPROC set = GetProcAddress(system, "NtSetDefaultUILanguage");
  if (!set) return false;
  reinterpret_cast<LONG(WINAPI*)(LANGID)>(reinterpret_cast<void*>(set))(language);
  SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
  return GetThreadUILanguage() == language;
}

std::wstring Texts::operator()(unsigned id) const {
  std::wstring text = Find(m_module, id, m_language);
  return text.empty() ? Find(m_module, id, kEnglish) : text;
}

std::wstring Texts::operator()(unsigned id, std::wstring_view value) const {
  std::wstring text = (*this)(id);
  std::size_t place = 0;
  while ((place = text.find(kPlaceholder, place)) != std::wstring::npos) {
    text.replace(place, kPlaceholder.size(), value);
    place += value.size();
  }
  return text;
}

}  // namespace window
