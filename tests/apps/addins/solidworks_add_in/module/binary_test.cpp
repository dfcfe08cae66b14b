// What the linker made of the DLL: its size, its debug information, its unwind data.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "add_in_dll.h"
#include "temp_folder.h"
#include "unix_program.h"

namespace {

/// The DLL, and the file with its debug information, as the system's programs name them.
std::string Dll() { return UnixPath(AddInDll::BuiltPath()); }
std::string DebugFile() { return UnixPath(AddInDll::BuiltPath() + L".debug"); }

/// The base address for which the linker wrote the file; the loader may have chosen another one.
DWORD64 PreferredBase() {
  const std::string headers = RunShell(TempFolder(), "x86_64-w64-mingw32-objdump -p " + Dll());
  std::smatch found;
  if (!std::regex_search(headers, found, std::regex("ImageBase\\s+([0-9a-f]+)"))) return 0;
  return std::stoull(found[1], nullptr, 16);
}

struct Function {
  DWORD64 address = 0;  // with the preferred base
  std::string name;     // as the compiler has it
};

/// The functions of the DLL with external names, from its debug file.
std::vector<Function> Functions() {
  std::istringstream lines(RunShell(TempFolder(), "x86_64-w64-mingw32-nm " + DebugFile()));
  std::vector<Function> result;
  std::string line;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    Function function;
    std::string type;
    if (words >> std::hex >> function.address >> type >> function.name && type == "T") {
      result.push_back(function);
    }
  }
  return result;
}

}  // namespace

#ifdef NDEBUG  // code that is not optimised is larger
TEST(Binary, StaysBelowItsSize) { EXPECT_LT(std::filesystem::file_size(AddInDll::BuiltPath()), 1'500'000u); }
#endif

TEST(Binary, HasItsDebugInformationInAFileBesideIt) {
  const TempFolder folder;
  const std::string sections = RunShell(folder, "x86_64-w64-mingw32-objdump -h " + Dll());
  EXPECT_EQ(sections.find(".debug_"), std::string::npos) << sections;
  EXPECT_NE(sections.find(".gnu_debuglink"), std::string::npos) << sections;

  const std::vector<Function> functions = Functions();
  const auto unload = std::ranges::find(functions, "DllCanUnloadNow", &Function::name);
  ASSERT_NE(unload, functions.end());
  std::ostringstream address;
  address << std::hex << unload->address;
  for (const std::string& file : {DebugFile(), Dll()}) {
    const std::string place =
        RunShell(folder, "x86_64-w64-mingw32-addr2line -fe " + file + " " + address.str());
    EXPECT_TRUE(std::regex_match(place, std::regex("DllCanUnloadNow\n/tavo/.*/exports\\.cpp:[1-9][0-9]*\n")))
        << place;
  }
}

// Without it, an exception that passes the function ends the process.
TEST(Binary, HasTheUnwindDataOfTheStandardLibrary) {
  const AddInDll dll;
  const DWORD64 base = reinterpret_cast<DWORD64>(dll.Handle()), preferred = PreferredBase();
  int count = 0;
  for (const Function& function : Functions()) {
    if (!function.name.starts_with("_ZNSt") && !function.name.starts_with("_ZNKSt")) continue;
    DWORD64 module = 0;
    EXPECT_TRUE(RtlLookupFunctionEntry(function.address - preferred + base, &module, nullptr))
        << function.name;
    ++count;
  }
  EXPECT_GT(count, 1000);
}
