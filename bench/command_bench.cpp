// A whole command over the pipe, with an answer that has no effect, beside bare exchanges of the same bytes.
#include <benchmark/benchmark.h>

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <string>

#include "command_jobs.h"

int main(int argc, char** argv) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // as the host's thread
  for (const std::string kind : {"ours", "overlapped", "blocking"}) {
    benchmark::RegisterBenchmark(("command/" + kind).c_str(), [kind](benchmark::State& state) {
      const BenchHome home;
      const auto job = MakeCommandJob(kind, home);
      for (auto _ : state) job();
    })->UseRealTime();
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
