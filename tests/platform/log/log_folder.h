/// @file A log for one test.
#pragma once

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "CLog.h"
#include "CLogInitializer.h"
#include "temp_folder.h"

/// A temporary log folder. After Start, the log of this process is written there.
class LogFolder {
 public:
  /// Properties of the appender "file": each line has five fields, separated by bars.
  static constexpr wchar_t kFieldsLayout[] =
      L"log4cplus.appender.file.layout=log4cplus::PatternLayout\n"
      L"log4cplus.appender.file.layout.ConversionPattern=%c|%p|%L|%M|%m%n\n";

  const TempFolder& Folder() const { return m_folder; }

  /// Starts the log like the add-in. @return the result of Initialize.
  bool Start(const std::wstring& application = L"SolidWorks") {
    m_initializer.emplace();
    return m_initializer->Initialize(m_folder.Path(), application,
                                     m_folder.Path() + L"/Log4cplus.properties");
  }

  /// Writes the properties file: `lines`, then kFieldsLayout.
  void WriteProperties(const std::wstring& lines) const {
    m_folder.WriteText(L"Log4cplus.properties", lines + L"\n" + kFieldsLayout);
  }

  /// Starts the log with a properties file; see WriteProperties.
  bool StartWith(const std::wstring& lines) {
    WriteProperties(lines);
    return Start();
  }

  void Stop() { m_initializer.reset(); }

  /// The lines of the log file `name`, without their line ends.
  std::vector<std::wstring> Lines(std::wstring_view name = L"SolidWorks.log") const {
    if (!m_folder.Exists(name)) return {};
    std::vector<std::wstring> lines;
    std::wistringstream text(m_folder.ReadText(name));
    for (std::wstring line; std::getline(text, line); lines.push_back(line)) {
      if (line.ends_with(L'\r')) line.pop_back();
    }
    return lines;
  }

 private:
  TempFolder m_folder;
  std::optional<CLogInitializer> m_initializer;
};

inline void PrintError(const std::wstring& message) {
  CLog::Print("C:\\source\\solidworks_add_in.cpp", 368, "CSolidWorksAddIn::PlmLogin", L"errormsg", 40000,
              message);
}

/// The line with kFieldsLayout after PrintError(L"text").
inline constexpr wchar_t kErrorLine[] = L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|text";

/// Properties: every event goes to the appender "file", which writes the file at `path`.
inline std::wstring FileAppender(const std::wstring& path) {
  return L"log4cplus.rootLogger=TRACE, file\n"
         L"log4cplus.appender.file=log4cplus::FileAppender\n"
         L"log4cplus.appender.file.File=" +
         path + L"\n";
}
