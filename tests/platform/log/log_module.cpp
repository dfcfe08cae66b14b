// A DLL that logs as the add-in does: its static object ends the log when the DLL is unloaded.
#include <string>

#include "CLog.h"
#include "CLogInitializer.h"

namespace {
CLogInitializer initializer;
}

extern "C" __declspec(dllexport) bool StartLog(const wchar_t* folder) {
  return initializer.Initialize(folder, L"SolidWorks", std::wstring(folder) + L"/Log4cplus.properties");
}

extern "C" __declspec(dllexport) void PrintEvent(const wchar_t* message) {
  CLog::Print("log_module.cpp", 1, "PrintEvent", L"errormsg", 40000, message);
}
