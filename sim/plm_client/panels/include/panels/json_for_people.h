/// @file JSON texts that people read and write.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace plm_panels {

/// What is wrong in a text that a person wrote, and where.
struct TextFault {
  std::size_t line;    ///< from 1
  std::size_t column;  ///< from 1, in characters
  std::size_t offset;  ///< in units of the wide text, from its start
  std::wstring reason;

  /// "line 3, column 7: ...".
  std::wstring Description() const;
};

/// The first fault of an answer: it is empty, for no answer, or the text of a JSON object. Nothing if it has
/// none.
std::optional<TextFault> FaultOfAnswer(std::wstring_view text);

/// The JSON text `text`, UTF-8, with one member to a line; the text as it stands if it is no JSON.
std::wstring ForReading(std::string_view text);

}  // namespace plm_panels
