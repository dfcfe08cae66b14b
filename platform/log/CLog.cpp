#include "CLog.h"

#include <windows.h>

#include <log4cplus/logger.h>
#include <log4cplus/loglevel.h>

#include "CLogInitializer.h"
#include "CStringHelper.h"

namespace {

std::wstring Wide(const char* text) { return text ? CStringHelper::UTF8ToUnicode(text) : std::wstring(); }

// One line, similar to those of the built-in set-up.
void WriteToDebugger(int line, const char* function, const std::wstring& channel, int level,
                     const std::wstring& message) {
  const std::wstring text = log4cplus::getLogLevelManager().toString(level) + L" " + channel + L" " +
                            Wide(function) + L":" + std::to_wstring(line) + L" - " + message + L"\n";
  OutputDebugStringW(text.c_str());
}

}  // namespace

void CLog::Print(const char* file, int line, const char* function, const std::wstring& channel, int level,
                 const std::wstring& message) noexcept {
  try {
    if (CLogInitializer::Initialized()) {
      log4cplus::Logger::getInstance(channel).log(level, message, file, line, function);
    } else {
      WriteToDebugger(line, function, channel, level, message);
    }
  } catch (...) {  // a failing log must not disturb the host
  }
}
