/// @file What is on a computer, and what has changed there.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Things by their names: a file "C:\folder\name.txt" with its size and time, a folder "C:\folder\", a
/// registry key "HKLM\Software\Key\", a registry value "HKLM\Software\Key\\name" ("HKLM\Software\Key\\" for
/// the default value) with its type and data. Names and texts as the system gives them.
using Snapshot = std::map<std::wstring, std::wstring>;

/// What to look at.
struct Scope {
  std::vector<std::wstring> folders;   ///< full paths
  std::vector<std::wstring> keys;      ///< such as L"HKLM\\Software"
  std::vector<std::wstring> left_out;  ///< names that are passed over, with everything below them; any case
};

/// Looks at everything in `scope`. Keys and folders that are not there, or that nobody may read, are empty.
Snapshot TakeSnapshot(const Scope& scope);

/// The differences: sorted lines "+ NAME = WHAT", "- NAME = WHAT" and "~ NAME = WHAT, was WHAT".
std::vector<std::wstring> Changes(const Snapshot& before, const Snapshot& after);

/// Those of `changes` whose names begin with one of `prefixes`, without regard to case.
std::vector<std::wstring> ChangesBelow(const std::vector<std::wstring>& changes,
                                       const std::vector<std::wstring>& prefixes);

/// The rest.
std::vector<std::wstring> ChangesNotBelow(const std::vector<std::wstring>& changes,
                                          const std::vector<std::wstring>& prefixes);
