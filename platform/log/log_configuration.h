/// @file The configuration of the logging library.
#pragma once

#include <string>
#include <vector>

/// Configures the logging library with `propertiesFile` if it exists and is usable, else with the built-in
/// set-up: `<folder>\<application>.log`.
///
/// Differences from the library's own behaviour: the file is UTF-8, with or without a byte-order mark;
/// `${LogFolder}` is `folder`; other variables are looked up among the properties of the file, then in the
/// environment; a relative path of a log file is one in `${LogFolder}`; a file appender without a locale
/// writes UTF-8; appenders with a thread of their own are ignored, because a host that unloads this module
/// would wait for that thread forever; what cannot be followed is replaced, so that no event is lost (see
/// CorrectProperties).
/// @return the faults of `propertiesFile`, one text for each, naming the file, the key and the value.
std::vector<std::wstring> ConfigureLog(const std::wstring& folder, const std::wstring& application,
                                       const std::wstring& propertiesFile);
