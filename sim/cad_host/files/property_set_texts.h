/// @file Converts texts that people type to values of custom properties.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace cad_host {

/// The number of a text such as "12"; empty if it is not a whole number or does not fit 32 bits.
std::optional<LONG> WholeNumberOf(const std::wstring& text);

/// The number of a text such as "1.5"; empty if it is not a number or not finite.
std::optional<double> FractionOf(const std::wstring& text);

/// true for "Yes", false for "No", without regard to case; empty for any other text.
std::optional<bool> YesOrNoOf(const std::wstring& text);

/// The start of the day of a text such as "2024-05-31"; empty if it is not a date.
std::optional<FILETIME> DateOf(const std::wstring& text);

}  // namespace cad_host
