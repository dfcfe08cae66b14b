#include "run_tests.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <thread>

#include "base/unique_handle.h"
#include "heap_check.h"
#include "stack_report.h"

namespace {

constexpr UINT kEndedEarly = 3;
constexpr DWORD kLongestReport = 5'000;  // milliseconds; ctest ends a program 10 seconds after TEST_SECONDS

std::atomic<const testing::TestInfo*> running_test = nullptr;
std::atomic<DWORD> reporting_thread = 0;  // no thread has this id
std::atomic<DWORD> report_watcher = 0;
char running_step[200] = {};  // fixed, because a report must not need memory
HANDLE report_begun = nullptr;
HANDLE watch_begun = nullptr;

// Stops this thread if a report has begun, which ends the program.
void WaitForReport() {
  if (reporting_thread != 0) Sleep(INFINITE);
}

// Google Test reads the running test under a lock, which a fault may have left locked.
class RunningTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& test) override { running_test = &test; }
  void OnTestEnd(const testing::TestInfo&) override {
    WaitForReport();
    CheckHeaps();
    running_test = nullptr;
  }
};

// Does not wait for the threads that still run.
[[noreturn]] void EndProgram() {
  TerminateProcess(GetCurrentProcess(), kEndedEarly);
  std::abort();  // not reached
}

// Only the first fault is reported. A fault of the report itself ends the program.
void BeginReport(std::string_view what) {
  DWORD reporter = 0;
  if (!reporting_thread.compare_exchange_strong(reporter, GetCurrentThreadId())) {
    if (reporter != GetCurrentThreadId()) Sleep(INFINITE);
    WriteAddresses();
    EndProgram();
  }
  EndHeapChecks();
  SetEvent(report_begun);
  WriteToErrors("\n");
  WriteToErrors(what);
}

void WriteRunningTest() {
  const testing::TestInfo* const test = running_test;
  WriteToErrors(" in ");
  WriteToErrors(test ? test->test_suite_name() : "no");
  WriteToErrors(".");
  WriteToErrors(test ? test->name() : "test");
  if (running_step[0]) WriteToErrors(", ");
  WriteToErrors(running_step);
  WriteToErrors("\n");
}

[[noreturn]] void EndReport() {
  WriteStacks();
  std::fflush(nullptr);
  EndProgram();
}

// Ends a report that waits for ever for memory or a lock.
void WatchReport() {
  report_watcher = GetCurrentThreadId();
  SetEvent(watch_begun);
  WaitForSingleObject(report_begun, INFINITE);
  Sleep(kLongestReport);
  WriteAddresses();
  EndProgram();
}

void WatchTests(unsigned seconds, const UniqueHandle& thread, DWORD id) {
  SetEvent(watch_begun);
  if (WaitForSingleObject(thread.get(), seconds * 1000) == WAIT_OBJECT_0) {
    // Wine ends a thread at a stack overflow, without an exception.
    BeginReport("crash: the thread of the tests ended, perhaps by a stack overflow,");
    WriteRunningTest();
    EndReport();
  }
  BeginReport("hang: still running after ");
  WriteToErrors(seconds, 10);
  WriteToErrors(" seconds,");
  WriteRunningTest();
  CollectStackOf(thread.get(), id);  // first, because the other stacks need memory
  CollectOtherStacks(report_watcher);
  EndReport();
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* exception) {
  BeginReport("crash: exception 0x");
  WriteToErrors(exception->ExceptionRecord->ExceptionCode, 16);
  WriteRunningTest();
  CollectStack(*exception->ContextRecord);
  EndReport();
}

[[noreturn]] void OnTerminate() {
  BeginReport("crash: an exception that nothing catches, or a call of std::terminate");
  WriteRunningTest();
  CollectOwnStack();
  EndReport();
}

void OnAbort(int) {
  BeginReport("crash: a call of std::abort");
  WriteRunningTest();
  CollectOwnStack();
  EndReport();
}

[[noreturn]] void OnDamagedMemory(const char* what) {
  BeginReport("crash: ");
  WriteToErrors(what);
  WriteToErrors(",");
  WriteRunningTest();
  CollectOwnStack();
  EndReport();
}

// Waits until the threads run: their start needs memory and locks, which a fault may leave locked.
void StartWatching() {
  report_begun = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  watch_begun = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  std::thread(WatchReport).detach();
  WaitForSingleObject(watch_begun, INFINITE);
  if (const char* const seconds = std::getenv("TEST_SECONDS")) {
    const DWORD id = GetCurrentThreadId();
    std::thread(WatchTests, static_cast<unsigned>(std::atoi(seconds)),
                OwnHandle(OpenThread(THREAD_ALL_ACCESS, FALSE, id)), id)
        .detach();
    WaitForSingleObject(watch_begun, INFINITE);
  }
}

}  // namespace

void SetRunningStep(std::string_view step) {
  running_step[step.copy(running_step, sizeof running_step - 1)] = '\0';
}

int RunTests(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new RunningTest);
  SetUnhandledExceptionFilter(OnCrash);
  std::set_terminate(OnTerminate);
  std::signal(SIGABRT, OnAbort);

  StartWatching();
  if (const char* const interval = std::getenv("HEAP_CHECK_INTERVAL")) {
    StartHeapChecks(static_cast<unsigned>(std::max(std::atoi(interval), 1)), OnDamagedMemory);
  }
  const int result = RUN_ALL_TESTS();
  WaitForReport();
  return result;
}
