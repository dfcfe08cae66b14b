/// @file The texts of a program in the language of its user.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace window {

/// The languages that a program has string tables for.
inline constexpr LANGID kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_UK);
inline constexpr LANGID kSimplifiedChinese = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED);
inline constexpr LANGID kTraditionalChinese = MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_TRADITIONAL);

/// The language with the name "en", "zh-CN" or "zh-TW"; empty for another name.
std::optional<LANGID> LanguageNamed(std::wstring_view name);

/// Makes `language` the language of this thread's user interface, for which libraries ask the system when
/// they choose a text.
/// @return false if the system does not do it.
bool UseLanguage(LANGID language);

/// The string tables of a module.
class Texts {
 public:
  /// @param module null: the program itself.
  explicit Texts(LANGID language, HINSTANCE module = nullptr) : m_language(language), m_module(module) {}

  LANGID Language() const { return m_language; }

  /// The text with this number; in English if the language lacks it, and empty if English lacks it too.
  std::wstring operator()(unsigned id) const;

  /// The text with each "%1" replaced by `value`.
  std::wstring operator()(unsigned id, std::wstring_view value) const;

 private:
  LANGID m_language;
  HINSTANCE m_module;
};

}  // namespace window
