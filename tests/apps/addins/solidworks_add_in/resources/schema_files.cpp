#include "schema_files.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "schema_case.h"

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
  const std::string command = "cd '" + m_folder.string() + "' && " + SchemaCommand(schema.string()) + " 2>&1";
  FILE* const pipe = popen(command.c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + command);
  std::string output;
  for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) output += static_cast<char>(byte);
  if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command + "\n" + output);
  return ReadVerdicts(output);
}

std::filesystem::path DefaultConfiguration() { return DEFAULT_CONFIGURATION; }

std::string TextOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
