/// @file The same jobs with nlohmann/json.
#pragma once

#include <cstddef>
#include <string>

/// Parses UTF-8. @return the number of bytes in the texts of the four lists.
std::size_t NlohmannRead(const std::string& text);
