/// @file What a logger's property says.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The keys of loggers: that of the root, and what the others begin with.
inline constexpr const wchar_t* kRootLogger = L"rootLogger";
inline constexpr std::wstring_view kLogger = L"logger.";

/// The value of rootLogger or of logger.NAME: a level, then the names of appenders, separated by commas.
struct LoggerValue {
  std::wstring level;
  std::vector<std::wstring> appenders;

  /// Blanks and empty names are left out, as the logging library does it.
  static LoggerValue Parse(std::wstring text);

  std::wstring Text() const;
};
