/// @file The platform's folders as the add-in under test finds them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "environment.h"
#include "temp_folder.h"

/// One platform root for the whole test program: the log is set up once per process, so its folder cannot
/// change between tests. Temporary files of the add-in go into a folder of their own as well.
class PlatformHome {
 public:
  static PlatformHome& Instance();

  /// Empties the configuration folder and starts to count log lines anew.
  void Reset();

  /// Writes a file into the configuration folder. @return its path.
  std::wstring WriteConfiguration(std::wstring_view name, std::string_view bytes) const;

  /// The path of a file in the configuration folder.
  std::wstring ConfigurationPath(std::wstring_view name) const;

  /// The log lines since Reset, as "channel|level|line|function|text".
  std::vector<std::wstring> LogLines() const;

  /// The same without the platform's own diagnostics, and those alone.
  std::vector<std::wstring> AddInLogLines() const;
  std::vector<std::wstring> PlatformLogLines() const;

  /// The source files that log events named since the program began.
  std::vector<std::wstring> LoggedSourceFiles() const;

  const TempFolder& Folder() const { return m_folder; }

  /// The icon files that are in the folder for temporary files.
  std::vector<std::wstring> IconFiles() const;

 private:
  PlatformHome();

  std::vector<std::wstring> AllLogLines() const;

  TempFolder m_folder;
  ScopedEnvironment m_home;
  ScopedEnvironment m_tmp;
  ScopedEnvironment m_temp;
  std::size_t m_seenLines = 0;
};
