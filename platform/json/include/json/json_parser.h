/// @file Parses all JSON texts of the project, by the same rules.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "detail/rapidjson_config.h"

/// The first fault in a JSON text: its position in bytes from the start, and what is wrong.
struct JsonFault {
  std::size_t offset;
  const char* reason;
};

/// Parses `text`, UTF-8 without a byte-order mark, into `document`. The text must be one JSON value of at
/// most 1,000 levels, valid UTF-8 and without unpaired surrogates. Parsing does not recurse, however deeply
/// the text is nested. Numbers that are not 64-bit integers become the nearest double.
/// @return nothing, or the first fault; `document` is then unchanged.
std::optional<JsonFault> ParseJson(std::string_view text, rapidjson::Document& document);
