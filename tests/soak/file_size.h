/// @file The size of a file.
#pragma once

#include <windows.h>

#include <string>

/// In bytes; 0 if there is no such file. The file may be open elsewhere.
inline long long FileSize(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return 0;
  return (static_cast<long long>(data.nFileSizeHigh) << 32) + data.nFileSizeLow;
}
