/// @file The options of the program.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "checks/checks.h"

namespace doctor {

struct Options {
  bool help = false;
  bool json = false;
  std::wstring bundle;               ///< the path of the archive; empty: none
  std::vector<const Area*> areas{};  ///< what is checked; empty: everything
  std::chrono::milliseconds patience = kDefaultPatience;
  std::wstring create;  ///< the class of which an object is created; empty: none
};

/// A wrong use of the program, in one line.
struct WrongUse {
  std::wstring text;
};

/// @param arguments  without the name of the program.
/// @throws WrongUse, which names the argument.
Options ParseOptions(const std::vector<std::wstring>& arguments);

/// What `--help` prints.
std::wstring Usage();

}  // namespace doctor
