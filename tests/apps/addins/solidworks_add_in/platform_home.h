/// @file The platform's folders for the add-in under test.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "environment.h"
#include "temp_folder.h"

/// The platform's root folder. The whole test program has only one: the log is set up once per process, so
/// its folder cannot change between tests. The add-in's temporary files have a folder of their own here too.
class PlatformHome {
 public:
  static PlatformHome& Instance();

  /// Empties the configuration folder. From now on, the log functions return only new lines.
  void Reset();

  /// Writes a file into the configuration folder. @return its path.
  std::wstring WriteConfiguration(std::wstring_view name, std::string_view bytes) const;

  /// The path of a file in the configuration folder.
  std::wstring ConfigurationPath(std::wstring_view name) const;

  /// The log lines since Reset, as "channel|level|line|function|text", without PlatformInformation.
  std::vector<std::wstring> LogLines() const;

  /// The same lines, split: those of the add-in, and the platform's own diagnostics.
  std::vector<std::wstring> AddInLogLines() const;
  std::vector<std::wstring> PlatformLogLines() const;

  /// The platform's information lines since Reset, which it writes without a failure.
  std::vector<std::wstring> PlatformInformation() const;

  /// The source files that the log has named since the program started.
  std::vector<std::wstring> LoggedSourceFiles() const;

  const TempFolder& Folder() const { return m_folder; }

  /// The icon files in the folder for temporary files.
  std::vector<std::wstring> IconFiles() const;

 private:
  PlatformHome();

  std::vector<std::wstring> AllLogLines() const;
  std::vector<std::wstring> NewLogLines() const;

  TempFolder m_folder;
  ScopedEnvironment m_home;
  ScopedEnvironment m_tmp;
  ScopedEnvironment m_temp;
  std::size_t m_seenLines = 0;
};
