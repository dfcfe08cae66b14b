/// @file Parses all JSON texts of the project, by the same rules.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "detail/json_document.h"

/// The first fault in a JSON text: its position in bytes from the start, and what is wrong.
struct JsonFault {
  std::size_t offset;
  const char* reason;
};

/// A place in a text for people: line and column from 1, the column in characters.
struct TextPosition {
  std::size_t line;
  std::size_t column;
};

/// The line and column of the byte at `offset` in `text`, UTF-8. Lines end with a line feed; a byte inside a
/// character has the column of the next one. An offset past the end counts as the end.
TextPosition PositionInText(std::string_view text, std::size_t offset);

/// The same for a message: "line 2, column 7".
std::wstring DescribePositionInText(std::string_view text, std::size_t offset);

/// Parses `text`, UTF-8 without a byte-order mark, into `document`. The text must be one JSON value of at
/// most 1,000 levels, valid UTF-8 and without unpaired surrogates. Parsing does not recurse, however deeply
/// the text is nested. Numbers that are not 64-bit integers become the nearest double, however many digits
/// they have; those that round past the largest double are a fault.
/// @return nothing, or the first fault; `document` is then unchanged.
std::optional<JsonFault> ParseJson(std::string_view text, JsonDocument& document);

/// The same, faster and with less memory: the document's strings lie in `text`, which must not be changed as
/// long as they are used.
std::optional<JsonFault> ParseJsonInPlace(std::string& text, JsonDocument& document);

/// The same for a wide text, whose lone surrogates read as U+FFFD. The fault's offset is that in UTF-8.
std::optional<JsonFault> ParseWideJson(std::wstring_view text, JsonDocument& document);
