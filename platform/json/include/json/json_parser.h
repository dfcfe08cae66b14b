/// @file The one place where JSON texts are parsed, with the rules that hold for all of them.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "detail/rapidjson_config.h"

/// What is wrong in a JSON text: the first fault and its place in bytes from the start.
struct JsonFault {
  std::size_t offset;
  const char* reason;
};

/// Parses `text`, UTF-8 without a byte-order mark, into `document`. The text must be one JSON value of at
/// most 1,000 levels, valid UTF-8 and free of unpaired surrogates. No depth of nesting makes it recurse.
/// Numbers that are no 64-bit integer become the nearest double.
/// @return nothing, or the first fault; `document` is then unchanged.
std::optional<JsonFault> ParseJson(std::string_view text, rapidjson::Document& document);
