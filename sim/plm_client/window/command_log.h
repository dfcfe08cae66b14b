/// @file What the hosts asked and what was answered.
#pragma once

#include <string>
#include <vector>

namespace plm_window {

struct LogEntry {
  std::wstring time;
  std::wstring command;
  std::wstring user;
  std::wstring answer;  ///< on one line
};

/// The current time of day, such as "14:05:31".
std::wstring TimeOfDay();

/// `text` on one line, shortened if it is long.
std::wstring OnOneLine(const std::wstring& text);

}  // namespace plm_window
