#include "configuration/log_properties.h"

#include <windows.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

#include "CStringHelper.h"
#include "appender_check.h"
#include "base/system_path.h"
#include "logger_value.h"
#include "property_correction.h"

using log4cplus::helpers::Properties;

namespace {

constexpr std::wstring_view kAdditivity = L"additivity.";
constexpr const wchar_t* kDefaultLevel = L"INFO";
constexpr const wchar_t* kInherited = L"INHERITED";

class Correction {
 public:
  Correction(Properties& properties, const LogPlace& built_in)
      : m_properties(properties), m_builtIn(built_in) {}

  std::vector<std::wstring> Run(const std::wstring& log_folder, LogFiles& files) {
    CorrectGeneralKeys();
    m_appenders = CorrectAppenders(m_properties, log_folder, files);
    CorrectLogger(kRootLogger, kDefaultLevel);
    for (const std::wstring& key : m_properties.KeysBelow(kLogger)) CorrectLogger(key, kInherited);
    const bool has_faults = !m_properties.Faults().empty();
    if (m_losesEvents || (has_faults && RootLogger().appenders.empty())) AddBuiltInToRoot();
    return m_properties.Faults();
  }

 private:
  void CorrectGeneralKeys() {
    for (const std::wstring& key : m_properties.KeysBelow({})) {
      if (key == kRootLogger || key.starts_with(kAppenderPrefix) || key.starts_with(kLogger)) continue;
      if (key.starts_with(kAdditivity)) {
        m_properties.CorrectValue(key, ValueKind::kBoolean);
      } else if (const Property* const property = FindGeneralProperty(key)) {
        m_properties.CorrectValue(key, property->kind);
      } else {
        m_properties.ReportUnknown(key);
        m_losesEvents = true;  // it may be a logger whose key is misspelt
      }
    }
  }

  void CorrectLogger(const std::wstring& key, const wchar_t* default_level) {
    if (!m_properties.Exists(key)) return;
    LoggerValue value = LoggerValue::Parse(m_properties.Value(key));
    const wchar_t* const complaint = FindComplaint(ValueKind::kLevel, value.level);
    if (complaint && value.level != kInherited) {
      m_properties.Report(key, value.level, complaint);
      value.level = default_level;
    }
    const auto is_unusable = [&](const std::wstring& name) {
      if (m_appenders.usable.contains(name)) return false;
      if (!m_appenders.removed.contains(name))
        m_properties.Report(key, name, L"is not the name of an appender");
      return true;
    };
    if (std::erase_if(value.appenders, is_unusable) > 0 && !WritesEverything(value)) {
      m_losesEvents = true;
      // The root logger then writes this logger's events.
      if (key.starts_with(kLogger)) {
        m_properties.Remove(std::wstring(kAdditivity) + key.substr(kLogger.size()));
      }
    }
    m_properties.Set(key, value.Text());
  }

  // Whether some appender writes every event into a file.
  bool WritesEverything(const LoggerValue& value) const {
    return std::ranges::any_of(value.appenders,
                               [this](const std::wstring& name) { return m_appenders.usable.at(name); });
  }

  LoggerValue RootLogger() const {
    return LoggerValue::Parse(m_properties.Exists(kRootLogger) ? m_properties.Value(kRootLogger)
                                                               : std::wstring(kDefaultLevel));
  }

  // The faults, too, then have a place.
  void AddBuiltInToRoot() {
    LoggerValue root = RootLogger();
    if (WritesEverything(root)) return;
    std::wstring name = L"builtIn";
    while (m_appenders.usable.contains(name)) name += L'_';
    AddBuiltInAppender(m_properties.All(), name, m_builtIn);
    root.appenders.push_back(name);
    m_properties.Set(kRootLogger, root.Text());
  }

  PropertyCorrection m_properties;
  const LogPlace& m_builtIn;
  CheckedAppenders m_appenders;
  bool m_losesEvents = false;
};

}  // namespace

std::optional<Properties> ReadLogProperties(const std::wstring& path, const std::wstring& log_folder) {
  std::ifstream file(SystemPath(path).c_str(), std::ios::binary);
  if (!file) return std::nullopt;
  const std::string bytes{std::istreambuf_iterator(file), {}};
  std::wstring text = CStringHelper::UTF8ToUnicode(bytes);
  if (text.starts_with(L'\uFEFF')) text.erase(0, 1);
  std::wistringstream stream(text);
  Properties properties(stream);
  if (!properties.exists(kLogFolderVariable)) properties.setProperty(kLogFolderVariable, log_folder);
  return properties;
}

std::vector<std::wstring> CorrectProperties(Properties& properties, const std::wstring& log_folder,
                                            const LogPlace& built_in, LogFiles& files) {
  return Correction(properties, built_in).Run(log_folder, files);
}

std::wstring LogNotReadable(const std::wstring& path) {
  return L"cannot read " + path + L"; using the built-in log configuration";
}

std::wstring LogWithoutAppender(const std::wstring& path) {
  return path + L" assigns no appender to any logger; using the built-in log configuration";
}
