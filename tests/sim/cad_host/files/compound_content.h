/// @file Everything in a compound file, for comparisons.
#pragma once

#include <map>
#include <string>

/// The bytes of all streams by their path such as `Geometry\Faces`; a storage has an entry that ends with
/// `\`. Reports a failure of the test if the file cannot be read.
std::map<std::wstring, std::string> CompoundContent(const std::wstring& path);
