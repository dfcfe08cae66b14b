/// @file Reading files that other programs have open.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace doctor {

/// The bytes of a file, or why it cannot be read.
struct FileContent {
  std::string bytes;
  DWORD error;                 ///< ERROR_SUCCESS, or the system's code
  std::uint64_t left_out = 0;  ///< bytes at its beginning that are missing in `bytes`
};

/// @param limit  how many bytes are read at most, from the end of the file.
FileContent ReadFileContent(const std::wstring& path, std::uint64_t limit);

/// `text` and the system's own text for `error`: "...: Access denied. (error 5)".
std::wstring WithSystemText(const std::wstring& text, DWORD error);

}  // namespace doctor
