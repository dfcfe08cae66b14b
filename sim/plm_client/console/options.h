/// @file The command line of the console client.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct Options {
  std::filesystem::path answers;
  std::wstring pipe;
  std::filesystem::path record;
  std::optional<std::chrono::seconds> until_idle;
  bool quiet = false;
  bool help = false;
};

/// @throws std::runtime_error naming the argument that is wrong or missing.
Options ParseOptions(const std::vector<std::wstring>& arguments);

/// What --help prints.
extern const char* const kHelp;
