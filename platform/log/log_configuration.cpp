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

#include "CStringHelper.h"
#include "base/file_attributes.h"
#include "base/system_path.h"
#include "properties_check.h"
#include "shared_file_appender.h"
#include "utf8_locale.h"

using log4cplus::helpers::Properties;

namespace {
constexpr const wchar_t* kLogFolder = L"LogFolder";

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

/// Configures the logging library with properties whose faults are corrected.
class Configurator : public log4cplus::PropertyConfigurator {
 public:
  explicit Configurator(const Properties& file)
      : PropertyConfigurator(file, log4cplus::Logger::getDefaultHierarchy(), fShadowEnvironment) {}

  /// The keys below "log4cplus.", without it; variables are already replaced.
  Properties& Settings() { return properties; }
};

// @return the faults of the properties.
std::vector<std::wstring> Apply(Properties& file, const LogPlace& place) {
  if (!file.exists(kLogFolder)) file.setProperty(kLogFolder, place.folder);
  Configurator configurator(file);
  std::vector<std::wstring> faults =
      CorrectProperties(configurator.Settings(), file.getProperty(kLogFolder), place);
  configurator.configure();
  return faults;
}

void ApplyBuiltIn(const LogPlace& place) {
  Configurator configurator{Properties()};
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
  Properties properties;
  if (!Read(propertiesFile, properties)) {
    ApplyBuiltIn(place);
    return {L"cannot read " + propertiesFile + L"; using the built-in log configuration"};
  }
  std::vector<std::wstring> faults = Apply(properties, place);
  for (std::wstring& fault : faults) fault.insert(0, propertiesFile + L": ");
  if (!IsUsable()) {
    faults.push_back(propertiesFile +
                     L" assigns no appender to any logger; using the built-in log configuration");
    ApplyBuiltIn(place);
  }
  return faults;
}
