/// @file The platform's own diagnostics.
#pragma once

#include <source_location>
#include <string>

#include "CLog.h"

/// Writes an error line under the logger "platform", with the caller's source position.
inline void LogPlatformError(const std::wstring& message,
                             std::source_location place = std::source_location::current()) noexcept {
  CLog::Print(place.file_name(), static_cast<int>(place.line()), place.function_name(), L"platform", 40000,
              message);
}
