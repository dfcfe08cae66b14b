#include "schema_files.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

/// What a line of the shell prints, errors included. @throws std::runtime_error with that if it fails.
std::string OutputOf(const std::string& line) {
  FILE* const pipe = popen((line + " 2>&1").c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + line);
  std::string output;
  for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) output += static_cast<char>(byte);
  if (pclose(pipe) != 0) throw std::runtime_error("failed: " + line + "\n" + output);
  return output;
}

}  // namespace

SchemaFiles::SchemaFiles() {
  std::string name = (std::filesystem::temp_directory_path() / "schema-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("cannot make " + name);
  m_folder = name;
}

SchemaFiles::~SchemaFiles() { std::filesystem::remove_all(m_folder); }

std::filesystem::path SchemaFiles::Write(const std::string& name, const std::string& bytes) const {
  const std::filesystem::path file = m_folder / name;
  std::ofstream(file, std::ios::binary) << bytes;
  return file;
}

std::map<std::string, std::string> SchemaFiles::Judge(const std::filesystem::path& schema) const {
  std::istringstream lines(OutputOf("cd '" + m_folder.string() +
                                    "' && /usr/bin/python3 '" SCHEMA_CHECK "' '" + schema.string() +
                                    "' *.json"));
  std::map<std::string, std::string> verdicts;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    verdicts[line.substr(0, tab)] = tab == std::string::npos ? "no verdict" : line.substr(tab + 1);
  }
  return verdicts;
}

std::filesystem::path DefaultConfiguration() { return DEFAULT_CONFIGURATION; }

std::string TextOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
