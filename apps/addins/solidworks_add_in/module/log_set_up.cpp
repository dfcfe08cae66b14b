#include "log_set_up.h"

#include <mutex>

#include "CLogInitializer.h"
#include "CZALCADPathHelper.h"
#include "base/file_attributes.h"
#include "base/module_path.h"
#include "com_module.h"
#include "configuration/names.h"
#include "configuration/places.h"
#include "log/platform_log.h"
#include "version.h"

namespace {

// Created when the DLL is loaded; ends the log when the DLL is unloaded.
CLogInitializer log_initializer;

std::mutex starting;

// The file that says how to log; if there is none, where the user may put one.
std::wstring PropertiesFile(const std::wstring& log_folder) {
  const std::wstring path = ModulePath(OwnModule());
  const auto places = LogConfigurationPlaces(log_folder, path.substr(0, path.find_last_of(L'\\')));
  const std::wstring found = FirstFile(places);
  return found.empty() ? log_folder + L"/" + kLogPropertiesFile : found;
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
    if (!log_initializer.Initialize(folder, kLogApplication, properties)) return false;
    LogPlatformInformation(L"version " PRODUCT_VERSION_WIDE L" from " +
                           CSolidWorksAddInModule::Instance().Path() + L", log configuration " +
                           (IsFile(properties) ? properties : L"built in"));
    return true;
  } catch (...) {  // no memory for the folder's name: no log
    return false;
  }
}
