/// @file Where the platform's files lie.
#pragma once

#include <string>
#include <vector>

/// The platform's root folder: the environment variable TAVO_HOME if set and not empty, else %APPDATA%\TAVO.
/// Without a separator at its end; empty if neither variable is set.
std::wstring PlatformFolder();

/// The log folder, which perhaps does not exist; empty without a root folder.
std::wstring LogFolder();

/// The paths at which the configuration file `file` is looked for, in this order: the user's, in the folder
/// of the configuration `name` below the root folder; the administrator's, below %PROGRAMDATA%\TAVO; the
/// installed one, in `config` below `module_folder`. A path is missing if its folder is not known.
std::vector<std::wstring> ConfigurationPlaces(const std::wstring& name, const std::wstring& file,
                                              const std::wstring& module_folder);

/// The paths at which the log's configuration is looked for: in the log folder `log_folder`, then those of a
/// configuration file.
std::vector<std::wstring> LogConfigurationPlaces(const std::wstring& log_folder,
                                                 const std::wstring& module_folder);

/// The first of `places` that is a file; empty if none is.
std::wstring FirstFile(const std::vector<std::wstring>& places);
