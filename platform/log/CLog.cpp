#include "CLog.h"

#include <log4cplus/logger.h>

#include "CLogInitializer.h"

void CLog::Print(const char* file, int line, const char* function, const std::wstring& channel, int level,
                 const std::wstring& message) noexcept {
  if (!CLogInitializer::Initialized()) return;
  try {
    log4cplus::Logger::getInstance(channel).log(level, message, file, line, function);
  } catch (...) {  // a failing log must not disturb the host
  }
}
