#include "run_tests.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <thread>

#include "stack_report.h"

namespace {

constexpr UINT kEndedEarly = 3;

// What runs when something goes wrong must not wait for the threads that run still.
[[noreturn]] void EndProgram() {
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), kEndedEarly);
  std::abort();  // not reached
}

void WriteHeadline(const char* what) {
  const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
  std::fprintf(stderr, "\n%s in %s.%s\n", what, test ? test->test_suite_name() : "no",
               test ? test->name() : "test");
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* exception) {
  char what[64];
  std::snprintf(what, sizeof what, "crash: exception 0x%08lx", exception->ExceptionRecord->ExceptionCode);
  WriteHeadline(what);
  WriteStack(*exception->ContextRecord);
  EndProgram();
}

// An exception that nobody catches.
[[noreturn]] void OnTerminate() {
  WriteHeadline("crash: an exception that nothing catches, or a call of std::terminate");
  WriteOwnStack();
  EndProgram();
}

void WatchForHang(unsigned seconds) {
  Sleep(seconds * 1000);
  char what[64];
  std::snprintf(what, sizeof what, "hang: still running after %u seconds,", seconds);
  WriteHeadline(what);
  WriteStacksOfOtherThreads();
  EndProgram();
}

}  // namespace

int RunTests(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  SetUnhandledExceptionFilter(OnCrash);
  std::set_terminate(OnTerminate);
  const char* const seconds = std::getenv("TEST_SECONDS");
  if (seconds) std::thread(WatchForHang, static_cast<unsigned>(std::atoi(seconds))).detach();
  return RUN_ALL_TESTS();
}
