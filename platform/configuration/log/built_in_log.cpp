#include "configuration/built_in_log.h"

#include "configuration/log_names.h"

using log4cplus::helpers::Properties;

void AddBuiltInAppender(Properties& properties, const std::wstring& appender, const LogPlace& place) {
  const std::wstring key = L"appender." + appender;
  properties.setProperty(key, kSharedFileAppenderName);
  properties.setProperty(key + L".File", place.folder + L"\\" + place.application + L".log");
  properties.setProperty(key + L".MaxFileSize", L"10MB");
  properties.setProperty(key + L".MaxBackupIndex", L"5");
  SetBuiltInLayout(properties, key);
}

void SetBuiltInLayout(Properties& properties, const std::wstring& appender_key) {
  const std::wstring layout = appender_key + L".layout";
  properties.setProperty(layout, L"log4cplus::PatternLayout");
  // Blanks follow the time because a runtime may cut a time that is longer than its pattern.
  properties.setProperty(layout + L".ConversionPattern",
                         L"%D{%Y-%m-%d %H:%M:%S.%q  }%i %-5p %c %M:%L - %m%n");
}
