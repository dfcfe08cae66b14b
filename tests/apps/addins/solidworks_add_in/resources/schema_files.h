/// @file A folder of JSON files that are judged by a schema, on the system on which the project is built.
#pragma once

#include <filesystem>
#include <map>
#include <string>

/// A new folder; the destructor removes it with its files.
class SchemaFiles {
 public:
  /// @throws std::runtime_error if the folder cannot be made.
  SchemaFiles();
  SchemaFiles(const SchemaFiles&) = delete;
  SchemaFiles& operator=(const SchemaFiles&) = delete;
  ~SchemaFiles();

  /// Writes a file. @return its full path.
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const;

  /// What the schema says against each file, by the file's name; empty if nothing.
  /// @throws std::runtime_error with the validator's output if it fails, as for a schema that is not valid.
  std::map<std::string, std::string> Judge(const std::filesystem::path& schema) const;

 private:
  std::filesystem::path m_folder;
};

/// The folder of the default configuration in the sources.
std::filesystem::path DefaultConfiguration();

/// The text of a file. @throws std::runtime_error with its path if it cannot be read.
std::string TextOf(const std::filesystem::path& file);
