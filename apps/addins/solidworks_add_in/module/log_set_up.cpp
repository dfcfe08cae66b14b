#include "log_set_up.h"

#include <mutex>

#include "CLogInitializer.h"
#include "CZALCADPathHelper.h"
#include "base/file_attributes.h"
#include "com_module.h"
#include "log/platform_log.h"
#include "version.h"

namespace {

constexpr const wchar_t* kApplicationName = L"SolidWorks";
constexpr const wchar_t* kPropertiesName = L"Log4cplus.properties";

// Created when the DLL is loaded; ends the log when the DLL is unloaded.
CLogInitializer log_initializer;

std::mutex starting;

// That of the log folder; if there is none, the administrator's or the installed one.
std::wstring PropertiesFile(const std::wstring& log_folder) {
  std::wstring own = log_folder + L"/" + kPropertiesName;
  if (IsFile(own)) return own;
  std::wstring other;
  CZALCADPathHelper::GetCADCfgPath(kConfigurationName, kPropertiesName, other);
  return IsFile(other) ? other : own;
}

}  // namespace

bool InitialiseLog() noexcept {
  if (CLogInitializer::Initialized()) return true;
  try {
    const std::lock_guard lock(starting);  // any thread may be the first that has something to log
    if (CLogInitializer::Initialized()) return true;
    std::wstring folder;
    CZALCADPathHelper::GetCADCfgLogPath(folder);
    const std::wstring properties = PropertiesFile(folder);
    if (!log_initializer.Initialize(folder, kApplicationName, properties)) return false;
    LogPlatformInformation(L"version " PRODUCT_VERSION_WIDE L" from " +
                           CSolidWorksAddInModule::Instance().Path() + L", log configuration " +
                           (IsFile(properties) ? properties : L"built in"));
    return true;
  } catch (...) {  // no memory for the folder's name: no log
    return false;
  }
}
