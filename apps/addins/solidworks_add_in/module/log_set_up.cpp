#include "log_set_up.h"

#include "CLogInitializer.h"
#include "CZALCADPathHelper.h"

namespace {

constexpr const wchar_t* kApplicationName = L"SolidWorks";

// The process's log, made when the DLL loads and ended when it unloads.
CLogInitializer log_initializer;

}  // namespace

bool InitialiseLog() noexcept {
  if (CLogInitializer::Initialized()) return true;
  try {
    std::wstring folder;
    CZALCADPathHelper::GetCADCfgLogPath(folder);
    return log_initializer.Initialize(folder, kApplicationName, folder + L"/Log4cplus.properties");
  } catch (...) {  // no memory for the folder's name: no log
    return false;
  }
}
