/// @file Programs of the system that Wine runs on.
#pragma once

#include <string>

#include "temp_folder.h"

/// Runs a line of the system's shell in `folder` and waits for its end, half a minute at most.
/// @return what it printed, errors included. @throws std::runtime_error where it cannot be run, does not
///         end or fails; the message has the line and what it printed.
std::string RunShell(const TempFolder& folder, const std::string& line);
