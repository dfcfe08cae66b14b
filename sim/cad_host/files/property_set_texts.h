/// @file Converts texts that people type to values of custom properties, and dates back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cad_host {

/// The number of a text such as "12"; empty if it is not a whole number or does not fit 64 bits.
std::optional<std::int64_t> WholeNumberOf(const std::wstring& text);

/// The number of a text such as "1.5"; empty if it is not a number or not finite.
std::optional<double> FractionOf(const std::wstring& text);

/// true for "Yes", false for "No", without regard to case; empty for any other text.
std::optional<bool> YesOrNoOf(const std::wstring& text);

/// The start of the day of a text such as "2024-05-31", as the number of 100 nanoseconds since 1601; empty if
/// it is not a date since then.
std::optional<std::uint64_t> DateOf(const std::wstring& text);

/// The day of a number of 100 nanoseconds since 1601, such as "2024-05-31"; "0000-00-00" if it is too large.
std::wstring DateText(std::uint64_t file_time);

}  // namespace cad_host
