/// @file The log file that several processes may share.
#pragma once

#include <log4cplus/appender.h>

#include <string>

#include "base/unique_handle.h"

/// Appends events to a UTF-8 file that several processes may write at the same time.
///
/// The library's own rolling appender keeps its file open, which keeps others from renaming it, and then
/// empties a file that it could not rename. This one opens the file for each event: whole lines of
/// several processes alternate, the file can be moved or deleted at any time, and a full file that
/// somebody holds just goes on growing until it can be renamed.
///
/// Properties: File; MaxFileSize in bytes, or with KB or MB (10MB); MaxBackupIndex, the number of old files
/// `<File>.1` (the youngest) and up (5). A missing folder is made. A file that cannot be written is tried
/// again at the next event.
class SharedFileAppender : public log4cplus::Appender {
 public:
  explicit SharedFileAppender(const log4cplus::helpers::Properties& properties);
  ~SharedFileAppender() override { destructorImpl(); }

  void close() override { closed = true; }

 protected:
  void append(const log4cplus::spi::InternalLoggingEvent& event) override;

 private:
  std::wstring OldFile(unsigned number) const { return m_file + L"." + std::to_wstring(number); }
  bool IsFullFor(std::size_t added) const;
  void Roll() const;

  std::wstring m_file;
  unsigned long long m_maxFileSize;
  unsigned m_maxBackupIndex = 5;
  UniqueHandle m_mutex;  // shared by the processes that write this file
};

/// The name under which a properties file finds the appender.
inline constexpr wchar_t kSharedFileAppenderName[] = L"tavo::SharedFileAppender";

/// Makes the appender known to the logging library.
void RegisterSharedFileAppender();
