/// @file What a logger's property says.
#pragma once

#include <string>
#include <vector>

/// The value of rootLogger or of logger.NAME: a level, then the names of appenders, separated by commas.
struct LoggerValue {
  std::wstring level;
  std::vector<std::wstring> appenders;

  /// Blanks and empty names are left out, as the logging library does it.
  static LoggerValue Parse(std::wstring text);

  std::wstring Text() const;
};
