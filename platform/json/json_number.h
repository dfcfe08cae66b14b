/// @file Numbers of a JSON text that are not 64-bit integers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The nearest double of `number`, a number in the syntax of JSON with any number of digits; nothing if it
/// rounds to more than the largest double.
std::optional<double> NearestDouble(std::string_view number);

/// Prepares a JSON text for RapidJSON, which refuses some numbers that fit into a double (such as 0e309) and
/// computes with overflowing exponents. In the result, zeros of the same length that RapidJSON reports as a
/// double stand in for numbers with many digits or large exponents; everything else is the same, byte for
/// byte.
/// @return nothing if no number of `text` must be replaced.
std::optional<std::string> WithoutExtremeNumbers(std::string_view text);
