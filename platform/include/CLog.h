/// @file Writing to the log.
#pragma once

#include <string>

class CLog {
 public:
  /// Writes one event. Never throws and reports no failure. While no log is running, before
  /// CLogInitializer::Initialize and after its object is destroyed, the event goes to the debugger.
  /// @param file, line, function the source of the event; they become part of it.
  /// @param channel the logger's name.
  /// @param level the priority as a number (40000 error, 20000 information).
  static void Print(const char* file, int line, const char* function, const std::wstring& channel, int level,
                    const std::wstring& message) noexcept;
};
