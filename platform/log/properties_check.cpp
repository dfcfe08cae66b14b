#include "properties_check.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "CFileHelper.h"
#include "CFilePathHelper.h"
#include "base/system_path.h"
#include "base/system_text.h"
#include "base/unique_handle.h"
#include "logger_value.h"
#include "property_table.h"
#include "shared_file_appender.h"
#include "utf8_locale.h"

using log4cplus::helpers::Properties;

namespace {

constexpr std::wstring_view kAppender = L"appender.";
constexpr std::wstring_view kLogger = L"logger.";
constexpr std::wstring_view kAdditivity = L"additivity.";
constexpr const wchar_t* kRootLogger = L"rootLogger";
constexpr const wchar_t* kDefaultLevel = L"INFO";
constexpr const wchar_t* kInherited = L"INHERITED";

constexpr std::wstring_view kThreadedAppenders[] = {L"log4cplus::AsyncAppender", L"log4cplus::SocketAppender",
                                                    L"log4cplus::SysLogAppender"};

// A path on a drive, in the root of a drive or on a server is not relative.
bool IsRelative(std::wstring_view path) {
  return !path.empty() && path[0] != L'\\' && path[0] != L'/' && (path.size() < 2 || path[1] != L':');
}

// Opens the file as an appender does; a missing file is created.
// @return ERROR_SUCCESS, or why the file cannot be opened.
DWORD TryToOpen(const std::wstring& path) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const UniqueHandle file =
      OwnHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, OPEN_ALWAYS, 0, nullptr));
  return file ? ERROR_SUCCESS : GetLastError();
}

class Correction {
 public:
  Correction(Properties& properties, std::wstring log_folder, const LogPlace& built_in)
      : m_properties(properties), m_logFolder(std::move(log_folder)), m_builtIn(built_in) {}

  std::vector<std::wstring> Run() {
    CorrectGeneralKeys();
    CorrectAppenders();
    CorrectLogger(kRootLogger, kDefaultLevel);
    for (const std::wstring& key : KeysBelow(kLogger)) CorrectLogger(key, kInherited);
    if (m_losesEvents || (!m_faults.empty() && RootLogger().appenders.empty())) AddBuiltInToRoot();
    return std::move(m_faults);
  }

 private:
  std::wstring Value(const std::wstring& key) const { return m_properties.getProperty(key); }

  void Report(const std::wstring& key, const std::wstring& value, const std::wstring& complaint) {
    m_faults.push_back(L"log4cplus." + key + L": \"" + value + L"\" " + complaint);
  }

  void ReportAndRemove(const std::wstring& key, const std::wstring& complaint) {
    Report(key, Value(key), complaint);
    m_properties.removeProperty(key);
  }

  // In alphabetical order, with the prefix.
  std::vector<std::wstring> KeysBelow(std::wstring_view prefix) const {
    std::vector<std::wstring> keys = m_properties.propertyNames();
    std::erase_if(keys, [&](const std::wstring& key) { return !key.starts_with(prefix); });
    return keys;
  }

  void RemoveAllBelow(std::wstring_view prefix) {
    for (const std::wstring& key : KeysBelow(prefix)) m_properties.removeProperty(key);
  }

  void ReportUnknown(const std::wstring& key) { ReportAndRemove(key, L"is ignored: the key is unknown"); }

  // @return whether the value can be followed; if not, it was reported and removed.
  bool CorrectValue(const std::wstring& key, ValueKind kind) {
    const wchar_t* const complaint = FindComplaint(kind, Value(key));
    if (complaint) ReportAndRemove(key, complaint);
    return !complaint;
  }

  void CorrectGeneralKeys() {
    for (const std::wstring& key : m_properties.propertyNames()) {
      if (key == kRootLogger || key.starts_with(kAppender) || key.starts_with(kLogger)) continue;
      if (key.starts_with(kAdditivity)) {
        CorrectValue(key, ValueKind::kBoolean);
      } else if (const Property* const property = FindGeneralProperty(key)) {
        CorrectValue(key, property->kind);
      } else {
        ReportUnknown(key);
        m_losesEvents = true;  // it may be a logger whose key is misspelt
      }
    }
  }

  void CorrectAppenders() {
    for (const std::wstring& key : KeysBelow(kAppender)) {
      if (key.find(L'.', kAppender.size()) == std::wstring::npos) CorrectAppender(key);
    }
    std::set<std::wstring> reported;
    for (const std::wstring& key : KeysBelow(kAppender)) {
      const std::wstring owner = key.substr(0, key.find(L'.', kAppender.size()));
      if (m_properties.exists(owner)) continue;
      if (reported.insert(owner).second)
        Report(key, Value(key), L"is ignored: log4cplus." + owner + L" is missing");
      m_properties.removeProperty(key);
    }
  }

  void CorrectAppender(const std::wstring& appender) {
    const std::wstring name = appender.substr(kAppender.size());
    const std::wstring type_name = Value(appender);
    const ComponentType* const type = FindAppenderType(type_name);
    const bool has_thread = std::ranges::count(kThreadedAppenders, type_name) > 0;
    if (!type) {
      Report(appender, type_name,
             has_thread ? L"is ignored: the appender \"" + name +
                              L"\" runs a thread of its own, so that the host could not unload the add-in"
                        : L"is not an appender type");
      RemoveAppender(appender);
      return;
    }
    CorrectAppenderProperties(appender, *type);
    CorrectLayout(appender);
    CorrectFilters(appender);
    if (type->Has(ValueKind::kFile) && !CorrectFile(appender, *type)) {
      RemoveAppender(appender);
      return;
    }
    if (type->Has(ValueKind::kLocale) && !m_properties.exists(appender + L".Locale")) {
      m_properties.setProperty(appender + L".Locale", kUtf8LocaleName);
    }
    const bool is_restricted =
        m_properties.exists(appender + L".Threshold") || m_properties.exists(appender + L".filters.1");
    m_usable[name] = type->Has(ValueKind::kFile) && !is_restricted;
  }

  void RemoveAppender(const std::wstring& appender) {
    RemoveAllBelow(appender + L".");
    m_properties.removeProperty(appender);
    m_removed.insert(appender.substr(kAppender.size()));
  }

  void CorrectAppenderProperties(const std::wstring& appender, const ComponentType& type) {
    for (const std::wstring& key : KeysBelow(appender + L".")) {
      const std::wstring name = key.substr(appender.size() + 1);
      if (name == L"layout" || name.starts_with(L"layout.") || name.starts_with(L"filters.")) continue;
      const Property* property = type.Find(name);
      if (!property) property = FindCommonAppenderProperty(name);
      if (!property) {
        ReportUnknown(key);
      } else if (CorrectValue(key, property->kind)) {
        CorrectPath(key, property->kind);
      }
    }
  }

  void CorrectPath(const std::wstring& key, ValueKind kind) {
    using enum ValueKind;
    if (kind != kFile && kind != kLockFile && kind != kPath) return;
    if (IsRelative(Value(key))) m_properties.setProperty(key, m_logFolder + L"\\" + Value(key));
    if (kind != kLockFile) return;
    if (const DWORD error = TryToOpen(Value(key))) ReportAndRemove(key, CannotBeOpened(error));
  }

  // A layout or a filter.
  // @return whether all of its properties can be followed; if not, they were reported and removed.
  bool CorrectComponent(const std::wstring& component, const ComponentType& type) {
    const std::size_t before = m_faults.size();
    for (const std::wstring& key : KeysBelow(component + L".")) {
      const Property* const property = type.Find(key.substr(component.size() + 1));
      if (property) {
        CorrectValue(key, property->kind);
      } else {
        ReportUnknown(key);
      }
    }
    return m_faults.size() == before;
  }

  void CorrectLayout(const std::wstring& appender) {
    const std::wstring layout = appender + L".layout";
    if (!m_properties.exists(layout)) {
      for (const std::wstring& key : KeysBelow(layout + L".")) {
        ReportAndRemove(key, L"is ignored: log4cplus." + layout + L" is missing");
      }
      return;
    }
    const ComponentType* const type = FindLayoutType(Value(layout));
    if (!type) {
      Report(layout, Value(layout), L"is not a layout type");
      RemoveAllBelow(layout);
    } else {
      CorrectComponent(layout, *type);
      const bool needs_pattern = type->Find(L"ConversionPattern") != nullptr;
      if (!needs_pattern || m_properties.exists(layout + L".ConversionPattern") ||
          m_properties.exists(layout + L".Pattern")) {
        return;
      }
      Report(layout, Value(layout), L"has no ConversionPattern");
    }
    SetBuiltInLayout(m_properties, appender);
  }

  // A filter that cannot be followed is removed together with the later ones, which could reject what it
  // would have accepted.
  void CorrectFilters(const std::wstring& appender) {
    const std::wstring prefix = appender + L".filters.";
    bool is_correct = true;
    int number = 1;
    for (; is_correct; ++number) {
      const std::wstring filter = prefix + std::to_wstring(number);
      if (!m_properties.exists(filter)) break;
      const ComponentType* const type = FindFilterType(Value(filter));
      if (!type) Report(filter, Value(filter), L"is not a filter type");
      is_correct = type && CorrectComponent(filter, *type);
      if (!is_correct) RemoveAllBelow(filter);
    }
    if (is_correct) return;
    for (; m_properties.exists(prefix + std::to_wstring(number)); ++number) {
      RemoveAllBelow(prefix + std::to_wstring(number));
    }
  }

  // @return whether the appender's file can be opened; if not, this was reported.
  bool CorrectFile(const std::wstring& appender, const ComponentType& type) {
    const std::wstring key = appender + L".File";
    const std::wstring path = Value(key);
    if (path.empty()) {
      if (m_properties.exists(appender + L".FilenamePattern")) return true;  // names the file, too
      Report(key, path, L"is not the path of a file");
      return false;
    }
    // Our own appender takes paths of any length and creates missing folders.
    const bool is_shared = type.name == kSharedFileAppenderName;
    std::wstring folder, name;
    CFilePathHelper::SplitFilePath(path, folder, name);
    if (is_shared || IsTrue(Value(appender + L".CreateDirs"))) {
      CFileHelper::CreateFolder(folder, false);
    }
    const DWORD error = TryToOpen(is_shared ? SystemPath(path) : path);
    if (error != ERROR_SUCCESS) Report(key, path, CannotBeOpened(error));
    return error == ERROR_SUCCESS;
  }

  static std::wstring CannotBeOpened(DWORD error) {
    return L"cannot be opened: " + SystemText(error) + L" (" + std::to_wstring(error) + L")";
  }

  void CorrectLogger(const std::wstring& key, const wchar_t* default_level) {
    if (!m_properties.exists(key)) return;
    LoggerValue value = LoggerValue::Parse(Value(key));
    const wchar_t* const complaint = FindComplaint(ValueKind::kLevel, value.level);
    if (complaint && value.level != kInherited) {
      Report(key, value.level, complaint);
      value.level = default_level;
    }
    const auto is_unusable = [&](const std::wstring& name) {
      if (m_usable.contains(name)) return false;
      if (!m_removed.contains(name)) Report(key, name, L"is not the name of an appender");
      return true;
    };
    if (std::erase_if(value.appenders, is_unusable) > 0 && !WritesEverything(value)) {
      m_losesEvents = true;
      // The root logger then writes this logger's events.
      if (key.starts_with(kLogger)) {
        m_properties.removeProperty(std::wstring(kAdditivity) + key.substr(kLogger.size()));
      }
    }
    m_properties.setProperty(key, value.Text());
  }

  // Whether some appender writes every event into a file.
  bool WritesEverything(const LoggerValue& value) const {
    return std::ranges::any_of(value.appenders,
                               [this](const std::wstring& name) { return m_usable.at(name); });
  }

  LoggerValue RootLogger() const {
    return LoggerValue::Parse(m_properties.exists(kRootLogger) ? Value(kRootLogger)
                                                               : std::wstring(kDefaultLevel));
  }

  // The faults, too, then have a place.
  void AddBuiltInToRoot() {
    LoggerValue root = RootLogger();
    if (WritesEverything(root)) return;
    std::wstring name = L"builtIn";
    while (m_usable.contains(name)) name += L'_';
    AddBuiltInAppender(m_properties, name, m_builtIn);
    root.appenders.push_back(name);
    m_properties.setProperty(kRootLogger, root.Text());
  }

  Properties& m_properties;
  std::wstring m_logFolder;
  const LogPlace& m_builtIn;
  std::vector<std::wstring> m_faults;
  std::map<std::wstring, bool> m_usable;  // by name: whether the appender writes every event into a file
  std::set<std::wstring> m_removed;       // the names of appenders that cannot be used
  bool m_losesEvents = false;
};

}  // namespace

std::vector<std::wstring> CorrectProperties(Properties& properties, const std::wstring& log_folder,
                                            const LogPlace& built_in) {
  return Correction(properties, log_folder, built_in).Run();
}
