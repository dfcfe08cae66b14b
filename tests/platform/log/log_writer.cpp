// A separate process that logs: log_writer FOLDER NAME COUNT writes COUNT events "NAME number".
#include <windows.h>

#include <string>

#include "CLog.h"
#include "CLogInitializer.h"

int wmain(int argc, wchar_t** argv) {
  if (argc != 4) return 2;
  const std::wstring folder = argv[1];
  CLogInitializer initializer;
  if (!initializer.Initialize(folder, L"SolidWorks", folder + L"/Log4cplus.properties")) return 1;
  for (int number = 0; number < std::stoi(argv[3]); ++number) {
    CLog::Print("file.cpp", 1, "F", L"errormsg", 40000,
                std::wstring(argv[2]) + L" " + std::to_wstring(number));
  }
  return 0;
}
