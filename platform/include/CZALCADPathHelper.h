/// @file The platform's folders.
#pragma once

#include <string>

/// Finds the folders with a CAD add-in's configuration and log.
///
/// The platform root is the environment variable TAVO_HOME if set and not empty, else %APPDATA%\TAVO.
/// Every operation returns 0, or an HRESULT if a folder cannot be determined or created.
class CZALCADPathHelper {
 public:
  /// Sets the configuration folder of this process: `<root>\config\<name>`.
  static long InitCADCfgPath(const std::wstring& name);

  /// The path of the configuration file `file`: in the configuration folder if it exists there, else the
  /// administrator's `%PROGRAMDATA%\TAVO\config\<name>\<file>` if that exists, else the installed default
  /// `config\<file>` beside this DLL if that exists, else the path in the configuration folder.
  /// @param name the configuration's name; empty for the one chosen by InitCADCfgPath.
  static long GetCADCfgPath(const std::wstring& name, const std::wstring& file, std::wstring& path);

  /// The log folder, `<root>\log`, created if it is missing. `path` is set even if the folder cannot be
  /// created; it is empty if there is no root.
  static long GetCADCfgLogPath(std::wstring& path);
};
