/// @file Paths of any length for the system's file calls.
#pragma once

#include <string>

/// The absolute form of `path`, without `/`, `.` and `..`; the empty string for an empty path.
std::wstring FullPath(const std::wstring& path);

/// `path` in the form that file calls take without the limit of 260 characters (`\\?\...`); never for a text
/// that a person reads. Short paths, relative ones and those already in that form stay as they are.
std::wstring SystemPath(const std::wstring& path);
