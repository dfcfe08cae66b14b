#include <gtest/gtest.h>

#include <windows.h>

#include <regex>
#include <string>

#include "base/unique_handle.h"
#include "environment.h"
#include "program_folder.h"
#include "temp_folder.h"

namespace {

/// Runs a test of crashing_program, which lies beside this program.
class CrashReport : public testing::Test {
 protected:
  /// @param seconds how long the test may run until it counts as hanging.
  /// @return what the program wrote to its standard error stream.
  std::string ReportOf(const std::string& test, int seconds) {
    const ScopedEnvironment limit(L"TEST_SECONDS", std::to_wstring(seconds));
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    UniqueHandle errors = OwnHandle(CreateFileW(m_folder.Path(L"errors").c_str(), GENERIC_WRITE, 0,
                                                &inheritable, CREATE_ALWAYS, 0, nullptr));
    EXPECT_TRUE(errors);
    m_exitCode = Run(L" --gtest_filter=Fault." + std::wstring(test.begin(), test.end()), errors.get());
    errors.reset();
    return m_folder.Read(L"errors");
  }

  DWORD m_exitCode = 0;

 private:
  static DWORD Run(const std::wstring& arguments, HANDLE errors) {
    std::wstring command = L"\"" + BesideTests(L"crashing_program.exe") + L"\"" + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = errors;
    PROCESS_INFORMATION information{};
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                               &information))
        << GetLastError();
    const UniqueHandle thread = OwnHandle(information.hThread);
    const UniqueHandle process = OwnHandle(information.hProcess);
    if (WaitForSingleObject(process.get(), 60'000) != WAIT_OBJECT_0) {
      ADD_FAILURE() << "the program does not end";
      TerminateProcess(process.get(), 0);
      WaitForSingleObject(process.get(), 10'000);
    }
    DWORD code = 0;
    GetExitCodeProcess(process.get(), &code);
    return code;
  }

  TempFolder m_folder;
  // Where this program's memory is checked, its children's is not. The system's debug library, which names
  // the functions, would take too long, and gives a block to the wrong heap.
  const ScopedEnvironment m_debug{L"WINEDEBUG", L"-all"};
  const ScopedEnvironment m_interval{L"HEAP_CHECK_INTERVAL", std::nullopt};
};

class DamagedMemory : public CrashReport {
  const ScopedEnvironment m_everyBlock{L"HEAP_CHECK_INTERVAL", L"1"};
};

TEST_F(DamagedMemory, IsReportedWithWhoGivesItBack) {
  const std::string report = ReportOf("DamagesABlock", 60);
  EXPECT_NE(m_exitCode, 0u);
  EXPECT_TRUE(report.starts_with("\ncrash: a damaged block is given back, in Fault.DamagesABlock\n"))
      << report;
  EXPECT_TRUE(
      std::regex_search(report, std::regex(R"(!\S*FreeDamagedBlock\S*  \S*crashing_program\.cpp:[0-9]+\n)")))
      << report;
}

TEST_F(DamagedMemory, IsReportedIfItIsFree) {
  const std::string report = ReportOf("WritesIntoAFreedBlock", 60);
  EXPECT_NE(m_exitCode, 0u);
  EXPECT_TRUE(report.starts_with("\ncrash: a freed block was written into, in Fault.WritesIntoAFreedBlock\n"))
      << report;
}

TEST_F(DamagedMemory, IsReportedWithWhoFreesItTwice) {
  const std::string report = ReportOf("FreesABlockTwice", 60);
  EXPECT_NE(m_exitCode, 0u);
  EXPECT_TRUE(
      report.starts_with("\ncrash: a block is freed twice, or a freed one was written into, in "
                         "Fault.FreesABlockTwice\n"))
      << report;
  EXPECT_TRUE(std::regex_search(report, std::regex(R"(!\S*FreeBlock\S*  \S*crashing_program\.cpp:[0-9]+\n)")))
      << report;
}

TEST_F(DamagedMemory, IsNotReportedWithoutIt) {
  EXPECT_EQ(ReportOf("IsMissing", 60), "");
  EXPECT_EQ(m_exitCode, 0u);
}

struct Fault {
  const char* name;  // of the test
  int seconds;
  std::string headline;
  std::string function;
};

void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.name; }

class CrashReportOfAFault : public CrashReport, public testing::WithParamInterface<Fault> {};

TEST_P(CrashReportOfAFault, NamesTheTestAndTheFunctionWithItsLine) {
  const std::string report = ReportOf(GetParam().name, GetParam().seconds);
  EXPECT_NE(m_exitCode, 0u);
  EXPECT_TRUE(report.starts_with("\n" + GetParam().headline + " in Fault." + GetParam().name + "\n"))
      << report;
  const std::regex frame("\n  crashing_program!\\S*" + GetParam().function +
                         R"(\S*  \S*crashing_program\.cpp:[0-9]+\n)");
  EXPECT_TRUE(std::regex_search(report, frame)) << report;
}

const Fault kFaults[] = {
    {"ReadsNull", 60, "crash: exception 0xc0000005", "ReadDeepest"},
    {"CallsNull", 60, "crash: exception 0xc0000005", "CallNull"},
    {"ThrowsOutOfAThread", 60, "crash: an exception that nothing catches, or a call of std::terminate",
     "ThrowDeepest"},
    {"Aborts", 60, "crash: a call of std::abort", "Abort"},
    {"SleepsForEver", 2, "hang: still running after 2 seconds,", "SleepDeepest"},
    {"WaitsForAThreadThatSleepsForEver", 2, "hang: still running after 2 seconds,", "SleepDeepest"},
};
INSTANTIATE_TEST_SUITE_P(, CrashReportOfAFault, testing::ValuesIn(kFaults),
                         [](const auto& fault) { return std::string(fault.param.name); });

// Its debug information lies in a file beside it.
TEST_F(CrashReport, NamesAFunctionOfTheAddInWithItsLine) {
  const std::string report = ReportOf("IsInTheAddIn", 60);
  EXPECT_NE(m_exitCode, 0u);
  const std::regex frame("\n  solidworks_add_in!DllGetClassObject  \\S*/exports\\.cpp:[0-9]+\n");
  EXPECT_TRUE(std::regex_search(report, frame)) << report;
}

TEST_F(CrashReport, HasAddressesIfThereIsNoMemoryForNames) {
  const std::string report = ReportOf("SleepsForEverWithTheHeapLocked", 2);
  EXPECT_NE(m_exitCode, 0u);
  EXPECT_TRUE(std::regex_match(
      report, std::regex("\nhang: still running after 2 seconds, in Fault.SleepsForEverWithTheHeapLocked\n"
                         "thread [0-9]+\n(  0x[0-9a-f]+\n)+")))
      << report;
}

// Some systems end the thread without an exception, so that there is no stack.
TEST_F(CrashReport, NamesTheTestThatOverflowsTheStack) {
  const std::string report = ReportOf("OverflowsTheStack", 60);
  EXPECT_NE(m_exitCode, 0u);
  EXPECT_TRUE(report.starts_with("\ncrash: ")) << report;
  EXPECT_NE(report.find(" in Fault.OverflowsTheStack\n"), std::string::npos) << report;
}

TEST_F(CrashReport, IsEmptyWithoutAFault) {
  EXPECT_EQ(ReportOf("IsMissing", 60), "");
  EXPECT_EQ(m_exitCode, 0u);
}

}  // namespace
