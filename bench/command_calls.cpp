// Runs commands between two marks, for counting the calls of Wine's server in between; its trace shows the
// names of events: command_calls ours|overlapped|blocking COUNT
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "bench_home.h"
#include "command_jobs.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const BenchHome home;
  const auto job = MakeCommandJob(argv[1], home);
  for (int warm = 0; warm < 10; ++warm) job();
  CreateEventW(nullptr, TRUE, FALSE, L"bench-begin");
  for (int count = std::atoi(argv[2]); count > 0; --count) job();
  CreateEventW(nullptr, TRUE, FALSE, L"bench-end");
  std::printf("%04lx\n", GetCurrentThreadId());
}
