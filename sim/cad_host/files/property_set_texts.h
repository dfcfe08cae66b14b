/// @file Values of custom properties as the texts that people type and see.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace cad_host {

/// The whole number that "12" is; nothing where it is none or takes more than 32 bits.
std::optional<LONG> WholeNumberOf(const std::wstring& text);

/// The number that "1.5" is; nothing where it is none or no finite one.
std::optional<double> FractionOf(const std::wstring& text);

/// What "Yes" and "No" say, without regard to case.
std::optional<bool> YesOrNoOf(const std::wstring& text);

/// The beginning of the day that "2024-05-31" names.
std::optional<FILETIME> DateOf(const std::wstring& text);

}  // namespace cad_host
