// Runs the tests, or what a test has started this program again for.
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include "child_process.h"
#include "run_tests.h"

namespace {

std::vector<std::wstring> ProgramArguments() {
  int count = 0;
  LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  const std::vector<std::wstring> result(arguments + 1, arguments + count);
  LocalFree(arguments);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  int exit_code = 0;
  if (RunAsChild(ProgramArguments(), exit_code)) return exit_code;
  return RunTests(argc, argv);
}
