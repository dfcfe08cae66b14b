/// @file Paths of any length for the system's file calls.
#pragma once

#include <string>

/// The absolute form of `path`, without `/`, `.` and `..`; the empty string for an empty path.
std::wstring FullPath(const std::wstring& path);

/// `path` in the form that file calls accept without the limit of 260 characters (`\\?\...`). Not for texts
/// that users read. Short paths, relative paths and paths already in that form are returned unchanged.
std::wstring SystemPath(const std::wstring& path);
