// Runs the test programs that lie in its folder, and adds their results up.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "base/module_path.h"
#include "base/unique_handle.h"
#include "base/utf8.h"
#include "installations.h"
#include "plan.h"
#include "program_run.h"
#include "test_results.h"

namespace {

namespace fs = std::filesystem;

enum ExitCode { kAllPassed = 0, kSomeFailed = 1, kRefused = 2, kNotElevated = 5 };

constexpr const char* kUsage =
    "usage: run_tests [LISTS [RESULTS]]\n"
    "\n"
    "Runs the test programs of the test kit; the last line is \"N passed, N failed\". Needs elevation, and a "
    "machine\n"
    "on which neither the real CAD host nor the add-in is installed.\n"
    "\n"
    "  LISTS     the folder with test_programs.txt and left_out.txt: the programs' own if not given\n"
    "  RESULTS   the folder for what the programs print and find: \"results\" beside the programs' folder if "
    "not given\n";

bool IsElevated() {
  HANDLE opened = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened);
  const UniqueHandle token = OwnHandle(opened);
  TOKEN_ELEVATION elevation{};
  DWORD size = 0;
  return GetTokenInformation(token.get(), TokenElevation, &elevation, sizeof elevation, &size) &&
         elevation.TokenIsElevated;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + utf8::Encode<wchar_t>(path.wstring()));
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The reason why a program has no results.
std::string WhyNone(Ending ending) {
  switch (ending) {
    case Ending::kTimeUp:
      return "its time was up";
    case Ending::kNotStarted:
      return "it cannot be started";
    case Ending::kByItself:
      break;
  }
  return "it ended early";
}

/// A program without results counts as one failure.
TestResults ResultsOf(const PlannedProgram& program, Ending ending, const fs::path& results) {
  const fs::path file = results / (program.name + ".xml");
  if (ending == Ending::kByItself && fs::exists(file)) {
    if (auto found = ReadResults(ReadFile(file))) return *found;
  }
  return {.passed = 0, .failed = 1, .failures = {WhyNone(ending)}};
}

void Print(const PlannedProgram& program, const TestResults& found, const fs::path& results) {
  std::printf("%s: %d passed, %d failed\n", program.name.c_str(), found.passed, found.failed);
  for (const std::string& failure : found.failures) std::printf("    failed: %s\n", failure.c_str());
  if (found.failed > 0) {
    const fs::path output = results / (program.name + ".txt");
    std::printf("    see %s\n", utf8::Encode<wchar_t>(output.wstring()).c_str());
  }
  std::fflush(stdout);
}

/// Runs all programs. @return whether all tests passed, and there were some.
bool RunAll(const std::vector<PlannedProgram>& plan, const fs::path& programs, const fs::path& results) {
  int passed = 0, failed = 0;
  for (const PlannedProgram& program : plan) {
    if (program.filter.empty()) continue;
    const TestResults found = ResultsOf(program, RunProgram(program, programs, results), results);
    Print(program, found, results);
    passed += found.passed;
    failed += found.failed;
  }
  std::printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 && passed > 0;
}

/// Whether the registry has what the tests would change; says what it is.
bool IsInstalledHere() {
  const std::vector<std::wstring> found = FoundInstallations();
  if (found.empty()) return false;
  std::fprintf(
      stderr,
      "run_tests: the CAD host or the add-in is installed on this machine, or was: the tests would change\n"
      "its entries in the registry. Run them on a machine without it, such as Windows Sandbox. Found:\n");
  for (const std::wstring& key : found) std::fprintf(stderr, "  %s\n", utf8::Encode<wchar_t>(key).c_str());
  return true;
}

int Run(const fs::path& lists, const fs::path& programs, const fs::path& results) {
  if (!IsElevated()) {
    std::fprintf(stderr, "run_tests: registering the add-in needs an elevated prompt\n");
    return kNotElevated;
  }
  if (IsInstalledHere()) return kRefused;
  const auto plan = ReadPlan(ReadFile(lists / "test_programs.txt"), ReadFile(lists / "left_out.txt"));
  fs::create_directories(results);
  const bool all_passed = RunAll(plan, programs, results);
  RemoveLeftovers();
  return all_passed ? kAllPassed : kSomeFailed;
}

}  // namespace

int wmain(int count, wchar_t** arguments) try {
  if (count > 3 || (count > 1 && arguments[1][0] == L'-')) {
    std::fputs(kUsage, stderr);
    return kRefused;
  }
  const fs::path programs = fs::path(ModulePath(nullptr)).parent_path();
  const fs::path lists = count > 1 ? fs::absolute(arguments[1]) : programs;
  const fs::path results = count > 2 ? fs::absolute(arguments[2]) : programs.parent_path() / "results";
  return Run(lists, programs, results);
} catch (const std::exception& error) {
  std::fprintf(stderr, "run_tests: %s\n", error.what());
  return kRefused;
}
