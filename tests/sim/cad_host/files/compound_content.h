/// @file Everything in a compound file, for comparisons.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct CompoundElement {
  std::string bytes;     ///< of a stream
  std::string class_id;  ///< 16 bytes
  std::uint32_t state_bits = 0;
  std::uint64_t created = 0;  ///< 100 nanoseconds since 1601; 0 if not set
  std::uint64_t modified = 0;
};

/// All streams by their path such as `Geometry\Faces`; a storage has an entry that ends with `\`, and the
/// root the empty path. Reports a failure of the test if the file cannot be read.
using CompoundElements = std::map<std::wstring, CompoundElement>;
CompoundElements CompoundContent(const std::wstring& path);

/// What differs, such as "Geometry\ modified"; empty if nothing does.
std::vector<std::wstring> Differences(const CompoundElements& a, const CompoundElements& b);
