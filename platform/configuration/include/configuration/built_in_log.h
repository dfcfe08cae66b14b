/// @file The log without a configuration.
#pragma once

#include <log4cplus/helpers/property.h>

#include <string>

/// Where the log of the built-in set-up lies: `<folder>\<application>.log`.
struct LogPlace {
  std::wstring folder;
  std::wstring application;
};

/// Adds the file appender of the built-in set-up under the name `appender`; no logger uses it yet. Keys are
/// without "log4cplus.", here and below.
void AddBuiltInAppender(log4cplus::helpers::Properties& properties, const std::wstring& appender,
                        const LogPlace& place);

/// Sets the layout of the built-in set-up for the appender with the key `appender_key`, "appender.NAME".
void SetBuiltInLayout(log4cplus::helpers::Properties& properties, const std::wstring& appender_key);
