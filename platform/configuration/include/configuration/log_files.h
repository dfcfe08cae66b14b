/// @file How the check of a log configuration treats the files that it names.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// What is done with the files of appenders while a configuration is checked.
class LogFiles {
 public:
  LogFiles() = default;
  LogFiles(const LogFiles&) = delete;
  LogFiles& operator=(const LogFiles&) = delete;
  virtual ~LogFiles() = default;

  /// An appender makes `folder` and its parents if they are missing.
  virtual void MakeFolder(const std::wstring& folder) = 0;

  /// An appender opens the file `path` and makes it if it is missing.
  /// @return ERROR_SUCCESS, or why the file cannot be opened.
  virtual DWORD TryToOpen(const std::wstring& path) = 0;
};

/// Makes folders and files as the appenders would.
class MadeLogFiles : public LogFiles {
 public:
  void MakeFolder(const std::wstring& folder) override;
  DWORD TryToOpen(const std::wstring& path) override;
};

/// Leaves everything as it is: finds out whether folders and files could be made.
class ExaminedLogFiles : public LogFiles {
 public:
  void MakeFolder(const std::wstring& folder) override { m_madeFolders.push_back(folder); }
  DWORD TryToOpen(const std::wstring& path) override;

  /// The files that can be opened, also those that are still missing.
  const std::vector<std::wstring>& Usable() const { return m_usable; }

 private:
  DWORD Examine(const std::wstring& path) const;

  std::vector<std::wstring> m_madeFolders;
  std::vector<std::wstring> m_usable;
};

/// Whether files can be made in `folder`, which itself may still have to be made. Tries it with a file or a
/// folder that is gone afterwards.
/// @return ERROR_SUCCESS, or why not.
DWORD TryToWriteIn(const std::wstring& folder);
