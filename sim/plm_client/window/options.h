/// @file The command line of the client with windows.
#pragma once

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "misbehaviour.h"

namespace plm_window {

struct Options {
  std::filesystem::path vault{};
  std::filesystem::path make_sample{};
  std::wstring pipe{};
  LANGID language = 0;  ///< 0: the user's own
  std::filesystem::path person{};
  std::filesystem::path answers{};
  std::chrono::milliseconds step{600};
  std::optional<std::chrono::seconds> until_idle{};
  std::wstring user{};
  std::optional<SIZE> geometry{};  ///< at 96 dots per inch
  std::optional<FaultChoice> misbehave{};
  std::wstring layout_file{};
  std::filesystem::path pictures{};  ///< folder of the pictures that the person's file wants; empty: none
  bool help = false;
};

/// @throws std::runtime_error naming the argument that is wrong or missing.
Options ParseOptions(const std::vector<std::wstring>& arguments);

/// What --help prints.
extern const char* const kHelp;

}  // namespace plm_window
