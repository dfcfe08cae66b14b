#include "log_configuration.h"

#include <windows.h>

#include <log4cplus/helpers/loglog.h>
#include <log4cplus/helpers/property.h>
#include <log4cplus/logger.h>

#include <algorithm>
#include <optional>

#include "base/file_attributes.h"
#include "configuration/log_configurator.h"
#include "configuration/log_properties.h"
#include "shared_file_appender.h"
#include "utf8_locale.h"

using log4cplus::helpers::Properties;

namespace {
bool Exists(const std::wstring& path) { return FileAttributes(path) != INVALID_FILE_ATTRIBUTES; }

// @return the faults of the properties.
std::vector<std::wstring> Apply(const Properties& file, const LogPlace& place) {
  LogConfigurator configurator(file);
  MadeLogFiles files;
  std::vector<std::wstring> faults =
      CorrectProperties(configurator.Settings(), file.getProperty(kLogFolderVariable), place, files);
  configurator.configure();
  return faults;
}

void ApplyBuiltIn(const LogPlace& place) {
  LogConfigurator configurator{Properties()};
  AddBuiltInAppender(configurator.Settings(), L"file", place);
  configurator.Settings().setProperty(L"rootLogger", L"INFO, file");
  configurator.configure();
}

// Whether some logger has an appender, or logging is switched off.
bool IsUsable() {
  log4cplus::Logger root = log4cplus::Logger::getRoot();
  if (root.getLogLevel() == log4cplus::OFF_LOG_LEVEL || !root.getAllAppenders().empty()) return true;
  return std::ranges::any_of(log4cplus::Logger::getCurrentLoggers(),
                             [](log4cplus::Logger& logger) { return !logger.getAllAppenders().empty(); });
}
}  // namespace

std::vector<std::wstring> ConfigureLog(const std::wstring& folder, const std::wstring& application,
                                       const std::wstring& propertiesFile) {
  // The library reports its own faults on the standard error stream, which belongs to the host.
  log4cplus::helpers::getLogLog().setQuietMode(true);
  RegisterUtf8Locale();
  RegisterSharedFileAppender();

  const LogPlace place{folder, application};
  if (!Exists(propertiesFile)) {
    ApplyBuiltIn(place);
    return {};
  }
  const std::optional<Properties> properties = ReadLogProperties(propertiesFile, folder);
  if (!properties) {
    ApplyBuiltIn(place);
    return {LogNotReadable(propertiesFile)};
  }
  std::vector<std::wstring> faults = Apply(*properties, place);
  for (std::wstring& fault : faults) fault.insert(0, propertiesFile + L": ");
  if (!IsUsable()) {
    faults.push_back(LogWithoutAppender(propertiesFile));
    ApplyBuiltIn(place);
  }
  return faults;
}
