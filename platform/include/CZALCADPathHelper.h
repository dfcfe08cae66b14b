/// @file The platform's folders.
#pragma once

#include <string>

/// Where the platform keeps a CAD add-in's configuration and log.
///
/// The platform root is the environment variable TAVO_HOME if set and not empty, else %APPDATA%\TAVO.
/// Every operation returns 0, or an HRESULT where a folder cannot be found or made.
class CZALCADPathHelper {
 public:
  /// Chooses the configuration folder of this process: `<root>\config\<name>`.
  static long InitCADCfgPath(const std::wstring& name);

  /// The path of the configuration file `file`: in the configuration folder if it exists there, else the
  /// installed default `config\<file>` beside this DLL if that exists, else the path in the
  /// configuration folder.
  /// @param name the configuration's name; empty for the one chosen by InitCADCfgPath.
  static long GetCADCfgPath(const std::wstring& name, const std::wstring& file, std::wstring& path);

  /// The log folder, `<root>\log`, made when missing. `path` is set also where it cannot be made; it is
  /// empty where there is no root.
  static long GetCADCfgLogPath(std::wstring& path);
};
