/// @file Programs of the system on which Wine runs.
#pragma once

#include <string>

#include "temp_folder.h"

/// A path as the system's shell takes it, between quotes. Drive Z is the system's root folder.
std::string UnixPath(const std::wstring& path);

/// Runs a line of the system's shell in `folder` and waits until it ends, at most half a minute.
/// @return its output, with errors. @throws std::runtime_error if it cannot be run, does not end or fails;
///         the message has the line and the output.
std::string RunShell(const TempFolder& folder, const std::string& line);
