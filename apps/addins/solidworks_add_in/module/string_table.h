/// @file Texts from the string table (ids: resources/resource_ids.h).
#pragma once

#include <windows.h>

#include <string>

/// The language of the string table for a user with the interface language `ui_language`:
/// traditional Chinese (Taiwan, Hong Kong, Macao, or no region), simplified Chinese for all other Chinese,
/// else English (United Kingdom).
LANGID StringTableLanguage(LANGID ui_language) noexcept;

/// The text `id` in the language of this thread's user interface, from the module whose resources are
/// current (see ModuleState); in English if that language has no such text.
/// @return the empty string if there is no such text.
std::wstring LoadResourceString(unsigned id);

/// The text `id` in `language` only. @return the empty string if there is no such text.
std::wstring LoadResourceString(unsigned id, LANGID language);

/// Like the first form, but from `module` instead of the current module.
std::wstring LoadResourceString(HINSTANCE module, unsigned id);
