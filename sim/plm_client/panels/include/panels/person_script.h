/// @file A person's choices, written down beforehand.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plm_panels {

/// Fills a field in, or selects rows.
struct PersonChoice {
  std::wstring field{};  ///< its name; empty: rows are selected
  std::wstring value{};
  std::vector<std::wstring> rows{};  ///< texts that stand in one of the cells
};

/// One line: choices that are made, then actions that are done, each in the order in which they are written.
struct PersonLine {
  std::string command;
  std::vector<PersonChoice> choices{};
  std::vector<std::wstring> actions{};
};

/// What a person does, command by command:
///
///     QD_PLMLogin user=kim log-in
///     QD_PLMDataSelector search="frame 2" check-out open "frame.sldasm" "bolt.sldprt"
///     QD_PLMQuery cancel
///
/// Blanks separate words; a word with blanks stands in quotes. A word with "=" fills a field in, a word in
/// quotes selects the row in which it stands in a cell, any other word is an action; "cancel" closes the
/// panel. The actions come last, wherever they stand in the line. Lines that begin with "#" are remarks.
class PersonScript {
 public:
  PersonScript() = default;

  /// @throws std::runtime_error naming the file and the line that is wrong.
  static PersonScript Read(const std::filesystem::path& file);

  /// @throws std::runtime_error naming the line that is wrong. `name` stands for the text's file.
  static PersonScript Parse(std::string_view text, const std::string& name);

  /// The next line for `command`, which is used up. Without one the person has to choose.
  std::optional<PersonLine> Next(std::string_view command);

 private:
  std::vector<PersonLine> m_lines;
};

}  // namespace plm_panels
