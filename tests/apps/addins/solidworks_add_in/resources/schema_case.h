/// @file Files for which a schema and the add-in may judge differently.
#pragma once

#include <map>
#include <ostream>
#include <sstream>
#include <string>

/// Who takes a file.
enum class TakenBy { kBoth, kNobody, kOnlyAddIn, kOnlySchema };

/// A configuration file, and who takes it. What only one of them takes is an exception that is known.
struct SchemaCase {
  std::string name;
  std::string json;
  TakenBy taken_by;

  bool SchemaTakes() const { return taken_by == TakenBy::kBoth || taken_by == TakenBy::kOnlySchema; }
  bool AddInTakes() const { return taken_by == TakenBy::kBoth || taken_by == TakenBy::kOnlyAddIn; }
};

inline void PrintTo(const SchemaCase& schema_case, std::ostream* stream) { *stream << schema_case.name; }

/// The line that judges all files of the shell's folder by a schema, the full path of the file `schema`.
inline std::string SchemaCommand(const std::string& schema) {
  return "/usr/bin/python3 '" SCHEMA_CHECK "' '" + schema + "' *.json";
}

/// What SchemaCommand has printed: the fault of each file, empty if there is none, by the file's name.
inline std::map<std::string, std::string> ReadVerdicts(const std::string& output) {
  std::map<std::string, std::string> verdicts;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    verdicts[line.substr(0, tab)] = tab == std::string::npos ? "no verdict" : line.substr(tab + 1);
  }
  return verdicts;
}
