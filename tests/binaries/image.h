/// @file A program or DLL as it lies on the disk.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A time that stands in a program, in seconds since 1970.
struct Stamp {
  std::string where;  // "header", "exports", "resources", ...
  unsigned long seconds = 0;
};

/// Every time in the headers and tables of a program or DLL.
/// @param bytes the whole file. @throws std::runtime_error if this is no program for Windows.
std::vector<Stamp> Stamps(std::string bytes);
