#include <algorithm>

#include "configuration/log_configurator.h"
#include "configuration/log_properties.h"
#include "logger_value.h"
#include "property_correction.h"

using log4cplus::helpers::Properties;

namespace {

// Whether some logger has an appender, or logging is switched off.
bool NamesAppender(const PropertyCorrection& properties) {
  const auto has_appender = [&properties](const std::wstring& key) {
    return !LoggerValue::Parse(properties.Value(key)).appenders.empty();
  };
  const LoggerValue root = LoggerValue::Parse(properties.Value(kRootLogger));
  return root.level == L"OFF" || !root.appenders.empty() ||
         std::ranges::any_of(properties.KeysBelow(kLogger), has_appender);
}

}  // namespace

std::vector<std::wstring> FindLogFaults(const std::wstring& path, const LogPlace& built_in,
                                        ExaminedLogFiles& files) {
  const std::optional<Properties> file = ReadLogProperties(path, built_in.folder);
  if (!file) return {LogNotReadable(path)};
  LogConfigurator configurator(*file);
  Properties& settings = configurator.Settings();
  std::vector<std::wstring> faults =
      CorrectProperties(settings, file->getProperty(kLogFolderVariable), built_in, files);
  for (std::wstring& fault : faults) fault.insert(0, path + L": ");
  if (!NamesAppender(PropertyCorrection(settings))) faults.push_back(LogWithoutAppender(path));
  return faults;
}
