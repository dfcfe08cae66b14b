/// @file A log file that several processes may write.
#pragma once

#include <windows.h>

#include <log4cplus/appender.h>

#include <string>

#include "base/unique_handle.h"

/// Appends events to a UTF-8 file that several processes may write at the same time.
///
/// The library's own rolling appender keeps its file open, so that other processes cannot rename it, and
/// empties a file that it cannot rename. This one opens the file for each event: the lines of several
/// processes are not mixed, the file can be moved or deleted at any time, and a full file that another
/// program has open grows until it can be renamed.
///
/// Properties: File; MaxFileSize in bytes, or with KB or MB (10MB); MaxBackupIndex, the number of old files
/// `<File>.1` (the newest) and up (5). A missing folder is created. If the file cannot be written, the event
/// goes to the debugger, after a line that says why, and the next event tries again.
class SharedFileAppender : public log4cplus::Appender {
 public:
  explicit SharedFileAppender(const log4cplus::helpers::Properties& properties);
  ~SharedFileAppender() override { destructorImpl(); }

  void close() override { closed = true; }

 protected:
  void append(const log4cplus::spi::InternalLoggingEvent& event) override;

 private:
  std::wstring OldFile(unsigned number) const { return m_file + L"." + std::to_wstring(number); }
  bool ExceedsMaximumWith(std::size_t added) const;
  void Roll() const;
  DWORD Write(const std::string& line) const;
  void WriteToDebugger(const std::wstring& text, DWORD error);

  std::wstring m_file;
  unsigned long long m_maxFileSize;
  unsigned m_maxBackupIndex = 5;
  DWORD m_lastError = ERROR_SUCCESS;  // why the last event could not be written
  UniqueHandle m_mutex;               // shared by the processes that write this file
};

/// Registers the appender, kSharedFileAppenderName, with the logging library.
void RegisterSharedFileAppender();
