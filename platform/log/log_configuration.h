/// @file What the logging library is set up with.
#pragma once

#include <string>
#include <vector>

/// Sets the logging library up from `propertiesFile` if it exists and is of use, else with the built-in
/// default: `<folder>\<application>.log`.
///
/// Other than with the library alone: the file is UTF-8, with or without a byte-order mark; `${LogFolder}`
/// is `folder` and other variables are properties of the file before those of the environment; a file
/// appender that names no locale writes UTF-8; appenders with a thread of their own are left out, because
/// a host that unloads this module would wait for that thread forever.
/// @return what is wrong with `propertiesFile`, one text for each fault, naming the file.
std::vector<std::wstring> ConfigureLog(const std::wstring& folder, const std::wstring& application,
                                       const std::wstring& propertiesFile);
