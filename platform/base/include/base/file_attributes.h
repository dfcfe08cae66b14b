/// @file Whether a file or folder exists at a path.
#pragma once

#include <windows.h>

#include <string>

/// The attributes of the file or folder `path`, which may be of any length.
/// @return INVALID_FILE_ATTRIBUTES, with the reason as the last error, if nothing is found there.
DWORD FileAttributes(const std::wstring& path);

/// Whether `path` is an existing file.
bool IsFile(const std::wstring& path);

/// Whether `path` is an existing folder.
bool IsFolder(const std::wstring& path);
