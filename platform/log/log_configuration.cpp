#include "log_configuration.h"

#include <windows.h>

#include <log4cplus/configurator.h>
#include <log4cplus/helpers/loglog.h>
#include <log4cplus/helpers/property.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/logger.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

#include "CStringHelper.h"
#include "base/file_attributes.h"
#include "base/system_path.h"
#include "shared_file_appender.h"
#include "utf8_locale.h"

using log4cplus::helpers::Properties;

namespace {
constexpr std::wstring_view kAppenderPrefix = L"log4cplus.appender.";
constexpr std::wstring_view kThreadedAppenders[] = {L"log4cplus::AsyncAppender", L"log4cplus::SocketAppender",
                                                    L"log4cplus::SysLogAppender"};

bool Exists(const std::wstring& path) { return FileAttributes(path) != INVALID_FILE_ATTRIBUTES; }

// @return false if the file cannot be read.
bool Read(const std::wstring& path, Properties& properties) {
  std::ifstream file(SystemPath(path).c_str(), std::ios::binary);
  if (!file) return false;
  const std::string bytes{std::istreambuf_iterator(file), {}};
  std::wstring text = CStringHelper::UTF8ToUnicode(bytes);
  if (text.starts_with(L'\uFEFF')) text.erase(0, 1);
  std::wistringstream stream(text);
  properties = Properties(stream);
  return true;
}

std::vector<std::wstring> AppenderKeys(const Properties& properties) {
  std::vector<std::wstring> keys = properties.propertyNames();
  std::erase_if(keys, [](const std::wstring& key) {
    return !key.starts_with(kAppenderPrefix) || key.find(L'.', kAppenderPrefix.size()) != std::wstring::npos;
  });
  return keys;
}

void SetIfMissing(Properties& properties, const std::wstring& key, const std::wstring& value) {
  if (!properties.exists(key)) properties.setProperty(key, value);
}

// @return the names of the removed appenders.
std::vector<std::wstring> RemoveThreadedAppenders(Properties& properties) {
  std::vector<std::wstring> removed;
  for (const std::wstring& key : AppenderKeys(properties)) {
    if (std::ranges::find(kThreadedAppenders, properties.getProperty(key)) == std::end(kThreadedAppenders)) {
      continue;
    }
    properties.removeProperty(key);
    removed.push_back(key.substr(kAppenderPrefix.size()));
  }
  return removed;
}

void Apply(Properties& properties, const std::wstring& folder) {
  SetIfMissing(properties, L"LogFolder", folder);
  for (const std::wstring& key : AppenderKeys(properties)) {
    SetIfMissing(properties, key + L".Locale", kUtf8LocaleName);
  }
  log4cplus::PropertyConfigurator(properties, log4cplus::Logger::getDefaultHierarchy(),
                                  log4cplus::PropertyConfigurator::fShadowEnvironment)
      .configure();
}

// Whether some logger has an appender, or logging is switched off.
bool IsUsable() {
  log4cplus::Logger root = log4cplus::Logger::getRoot();
  if (root.getLogLevel() == log4cplus::OFF_LOG_LEVEL || !root.getAllAppenders().empty()) return true;
  return std::ranges::any_of(log4cplus::Logger::getCurrentLoggers(),
                             [](log4cplus::Logger& logger) { return !logger.getAllAppenders().empty(); });
}

// Blanks follow the time because a runtime may cut a time that is longer than its pattern.
Properties DefaultProperties(const std::wstring& application) {
  const std::pair<const wchar_t*, std::wstring> defaults[] = {
      {L"log4cplus.rootLogger", L"INFO, file"},
      {L"log4cplus.appender.file", kSharedFileAppenderName},
      {L"log4cplus.appender.file.File", L"${LogFolder}\\" + application + L".log"},
      {L"log4cplus.appender.file.MaxFileSize", L"10MB"},
      {L"log4cplus.appender.file.MaxBackupIndex", L"5"},
      {L"log4cplus.appender.file.layout", L"log4cplus::PatternLayout"},
      {L"log4cplus.appender.file.layout.ConversionPattern",
       L"%D{%Y-%m-%d %H:%M:%S.%q  }%i %-5p %c %M:%L - %m%n"},
  };
  Properties properties;
  for (const auto& [key, value] : defaults) properties.setProperty(key, value);
  return properties;
}
}  // namespace

std::vector<std::wstring> ConfigureLog(const std::wstring& folder, const std::wstring& application,
                                       const std::wstring& propertiesFile) {
  // The library reports its own faults on the standard error stream, which belongs to the host.
  log4cplus::helpers::getLogLog().setQuietMode(true);
  RegisterUtf8Locale();
  RegisterSharedFileAppender();

  std::vector<std::wstring> faults;
  Properties properties;
  if (!Exists(propertiesFile)) {
    properties = DefaultProperties(application);
  } else if (!Read(propertiesFile, properties)) {
    faults.push_back(L"cannot read " + propertiesFile + L"; using the built-in log configuration");
    properties = DefaultProperties(application);
  }
  for (const std::wstring& name : RemoveThreadedAppenders(properties)) {
    faults.push_back(propertiesFile);
    faults.back() += L": ignoring the appender \"" + name +
                     L"\", which runs a thread of its own: the host could not unload the add-in";
  }
  Apply(properties, folder);
  if (!IsUsable()) {
    faults.push_back(propertiesFile +
                     L" assigns no appender to any logger; using the built-in log configuration");
    properties = DefaultProperties(application);
    Apply(properties, folder);
  }
  return faults;
}
