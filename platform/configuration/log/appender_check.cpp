#include "appender_check.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "CFilePathHelper.h"
#include "base/system_path.h"
#include "base/system_text.h"
#include "configuration/built_in_log.h"
#include "configuration/log_names.h"

namespace {

constexpr std::wstring_view kThreadedAppenders[] = {L"log4cplus::AsyncAppender", L"log4cplus::SocketAppender",
                                                    L"log4cplus::SysLogAppender"};

// A path on a drive, in the root of a drive or on a server is not relative.
bool IsRelative(std::wstring_view path) {
  return !path.empty() && path[0] != L'\\' && path[0] != L'/' && (path.size() < 2 || path[1] != L':');
}

std::wstring CannotBeOpened(DWORD error) {
  return L"cannot be opened: " + SystemText(error) + L" (" + std::to_wstring(error) + L")";
}

class AppenderCheck {
 public:
  AppenderCheck(PropertyCorrection& properties, std::wstring log_folder, LogFiles& files)
      : m_properties(properties), m_logFolder(std::move(log_folder)), m_files(files) {}

  CheckedAppenders Run() {
    for (const std::wstring& key : m_properties.KeysBelow(kAppenderPrefix)) {
      if (key.find(L'.', kAppenderPrefix.size()) == std::wstring::npos) CorrectAppender(key);
    }
    std::set<std::wstring> reported;
    for (const std::wstring& key : m_properties.KeysBelow(kAppenderPrefix)) {
      const std::wstring owner = key.substr(0, key.find(L'.', kAppenderPrefix.size()));
      if (m_properties.Exists(owner)) continue;
      if (reported.insert(owner).second)
        m_properties.Report(key, m_properties.Value(key), L"is ignored: log4cplus." + owner + L" is missing");
      m_properties.Remove(key);
    }
    return std::move(m_checked);
  }

 private:
  void CorrectAppender(const std::wstring& appender) {
    const std::wstring name = appender.substr(kAppenderPrefix.size());
    const std::wstring type_name = m_properties.Value(appender);
    const ComponentType* const type = FindAppenderType(type_name);
    const bool has_thread = std::ranges::count(kThreadedAppenders, type_name) > 0;
    if (!type) {
      m_properties.Report(
          appender, type_name,
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
    if (type->Has(ValueKind::kLocale) && !m_properties.Exists(appender + L".Locale")) {
      m_properties.Set(appender + L".Locale", kUtf8LocaleName);
    }
    const bool is_restricted =
        m_properties.Exists(appender + L".Threshold") || m_properties.Exists(appender + L".filters.1");
    m_checked.usable[name] = type->Has(ValueKind::kFile) && !is_restricted;
  }

  void RemoveAppender(const std::wstring& appender) {
    m_properties.RemoveAllBelow(appender + L".");
    m_properties.Remove(appender);
    m_checked.removed.insert(appender.substr(kAppenderPrefix.size()));
  }

  void CorrectAppenderProperties(const std::wstring& appender, const ComponentType& type) {
    for (const std::wstring& key : m_properties.KeysBelow(appender + L".")) {
      const std::wstring name = key.substr(appender.size() + 1);
      if (name == L"layout" || name.starts_with(L"layout.") || name.starts_with(L"filters.")) continue;
      const Property* property = type.Find(name);
      if (!property) property = FindCommonAppenderProperty(name);
      if (!property) {
        m_properties.ReportUnknown(key);
      } else if (m_properties.CorrectValue(key, property->kind)) {
        CorrectPath(key, property->kind);
      }
    }
  }

  void CorrectPath(const std::wstring& key, ValueKind kind) {
    using enum ValueKind;
    if (kind != kFile && kind != kLockFile && kind != kPath) return;
    if (IsRelative(m_properties.Value(key)))
      m_properties.Set(key, m_logFolder + L"\\" + m_properties.Value(key));
    if (kind != kLockFile) return;
    if (const DWORD error = m_files.TryToOpen(m_properties.Value(key)))
      m_properties.ReportAndRemove(key, CannotBeOpened(error));
  }

  // A layout or a filter.
  // @return whether all of its properties can be followed; if not, they were reported and removed.
  bool CorrectComponent(const std::wstring& component, const ComponentType& type) {
    const std::size_t before = m_properties.Faults().size();
    for (const std::wstring& key : m_properties.KeysBelow(component + L".")) {
      const Property* const property = type.Find(key.substr(component.size() + 1));
      if (property) {
        m_properties.CorrectValue(key, property->kind);
      } else {
        m_properties.ReportUnknown(key);
      }
    }
    return m_properties.Faults().size() == before;
  }

  void CorrectLayout(const std::wstring& appender) {
    const std::wstring layout = appender + L".layout";
    if (!m_properties.Exists(layout)) {
      for (const std::wstring& key : m_properties.KeysBelow(layout + L".")) {
        m_properties.ReportAndRemove(key, L"is ignored: log4cplus." + layout + L" is missing");
      }
      return;
    }
    const ComponentType* const type = FindLayoutType(m_properties.Value(layout));
    if (!type) {
      m_properties.Report(layout, m_properties.Value(layout), L"is not a layout type");
      m_properties.RemoveAllBelow(layout);
    } else {
      CorrectComponent(layout, *type);
      const bool needs_pattern = type->Find(L"ConversionPattern") != nullptr;
      if (!needs_pattern || m_properties.Exists(layout + L".ConversionPattern") ||
          m_properties.Exists(layout + L".Pattern")) {
        return;
      }
      m_properties.Report(layout, m_properties.Value(layout), L"has no ConversionPattern");
    }
    SetBuiltInLayout(m_properties.All(), appender);
  }

  // A filter that cannot be followed is removed. The library then ignores the later ones, too, which could
  // reject what it would have accepted.
  void CorrectFilters(const std::wstring& appender) {
    for (int number = 1;; ++number) {
      const std::wstring filter = appender + L".filters." + std::to_wstring(number);
      if (!m_properties.Exists(filter)) return;
      const ComponentType* const type = FindFilterType(m_properties.Value(filter));
      if (!type) m_properties.Report(filter, m_properties.Value(filter), L"is not a filter type");
      if (type && CorrectComponent(filter, *type)) continue;
      m_properties.RemoveAllBelow(filter);
      return;
    }
  }

  // @return whether the appender's file can be opened; if not, this was reported.
  bool CorrectFile(const std::wstring& appender, const ComponentType& type) {
    const std::wstring key = appender + L".File";
    const std::wstring path = m_properties.Value(key);
    if (path.empty()) {
      if (m_properties.Exists(appender + L".FilenamePattern")) return true;  // names the file, too
      m_properties.Report(key, path, L"is not the path of a file");
      return false;
    }
    if (path.find(L"${") != std::wstring::npos) {  // the library has replaced all that it knows
      m_properties.Report(key, path, L"names a variable that does not exist");
      return false;
    }
    // Our own appender takes paths of any length and creates missing folders.
    const bool is_shared = type.name == kSharedFileAppenderName;
    std::wstring folder, name;
    CFilePathHelper::SplitFilePath(path, folder, name);
    if (is_shared || IsTrue(m_properties.Value(appender + L".CreateDirs"))) {
      m_files.MakeFolder(folder);
    }
    const DWORD error = m_files.TryToOpen(is_shared ? SystemPath(path) : path);
    if (error != ERROR_SUCCESS) m_properties.Report(key, path, CannotBeOpened(error));
    return error == ERROR_SUCCESS;
  }

  PropertyCorrection& m_properties;
  const std::wstring m_logFolder;
  LogFiles& m_files;
  CheckedAppenders m_checked;
};

}  // namespace

CheckedAppenders CorrectAppenders(PropertyCorrection& properties, const std::wstring& log_folder,
                                  LogFiles& files) {
  return AppenderCheck(properties, log_folder, files).Run();
}
