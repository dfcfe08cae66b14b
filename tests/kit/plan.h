/// @file Which test programs the kit runs, how long they may take, and which of their tests are left out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct PlannedProgram {
  std::string name;      // without .exe
  unsigned seconds = 0;  // the longest that it may take
  std::string filter;    // GoogleTest's: everything that is not left out; empty if all of it is
};

/// Reads the two lists of the kit. Empty lines and lines that begin with # are passed over.
/// @param programs a line for each program: its name and its seconds.
/// @param left_out a line for each group of tests: the program, a filter of GoogleTest (* for all tests), the
/// reason.
/// @throws std::runtime_error with the line if it is none of these, or names a program that is not in
/// `programs`.
std::vector<PlannedProgram> ReadPlan(std::string_view programs, std::string_view left_out);
