#include "log_set_up.h"

#include "CLogInitializer.h"
#include "CZALCADPathHelper.h"

namespace {

constexpr const wchar_t* kApplicationName = L"SolidWorks";

// Created when the DLL is loaded; ends the log when the DLL is unloaded.
CLogInitializer log_initializer;

}  // namespace

bool InitialiseLog() noexcept {
  if (CLogInitializer::Initialized()) return true;
  try {
    std::wstring folder;
    CZALCADPathHelper::GetCADCfgLogPath(folder);
    return log_initializer.Initialize(folder, kApplicationName, folder + L"/Log4cplus.properties");
  } catch (...) {  // no memory for the path: no log
    return false;
  }
}
