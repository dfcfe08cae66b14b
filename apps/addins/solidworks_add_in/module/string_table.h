/// @file Texts from the string table (ids: resources/resource_ids.h).
#pragma once

#include <windows.h>

#include <string>

/// The language in which the string table speaks to a user whose interface language is `ui_language`:
/// traditional Chinese (Taiwan, Hong Kong, Macao, or no region), simplified Chinese for all other Chinese,
/// else English (United Kingdom).
LANGID StringTableLanguage(LANGID ui_language) noexcept;

/// The text `id` in the language of this thread's user interface, from the module whose resources are
/// current (see ModuleState); in English where that language has no such text.
/// @return the empty string where there is no such text.
std::wstring LoadResourceString(unsigned id);

/// The text `id` in `language` and no other. @return the empty string where there is none.
std::wstring LoadResourceString(unsigned id, LANGID language);

/// The text `id` of `module`, which need not be current, as in the first form.
std::wstring LoadResourceString(HINSTANCE module, unsigned id);
