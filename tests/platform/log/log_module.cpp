// A DLL that logs like the add-in: its static object shuts the log down when the DLL is unloaded.
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
