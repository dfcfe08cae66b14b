/// @file Faults of the appenders in a configuration of the log.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "configuration/log_files.h"
#include "property_correction.h"

inline constexpr std::wstring_view kAppenderPrefix = L"appender.";

/// The appenders of a configuration, by name.
struct CheckedAppenders {
  std::map<std::wstring, bool> usable;  // whether the appender writes every event into a file
  std::set<std::wstring> removed;       // cannot be used
};

/// Removes the appenders that cannot be used, and the properties of the others that cannot be followed. A
/// relative path of a file becomes a path in `log_folder`. Whether a file can be opened is asked of `files`.
CheckedAppenders CorrectAppenders(PropertyCorrection& properties, const std::wstring& log_folder,
                                  LogFiles& files);
