/// @file What lies at a path.
#pragma once

#include <windows.h>

#include <string>

/// The attributes of the file or folder `path`, which may be of any length.
/// @return INVALID_FILE_ATTRIBUTES, with the reason as the last error, if nothing can be found there.
DWORD FileAttributes(const std::wstring& path);

/// Whether a file is there.
bool IsFile(const std::wstring& path);

/// Whether a folder is there.
bool IsFolder(const std::wstring& path);
