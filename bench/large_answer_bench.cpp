// An answer of 64 MiB over the pipe, received and parsed, beside a bare read of the same bytes and
// RapidJSON's parse of message and answer.
#include <benchmark/benchmark.h>

#include <windows.h>
// After windows.h, which they need.
#include <objbase.h>

#include <memory>
#include <string>

#include "CJsonObject.h"
#include "CZALCmdInvoker.h"
#include "bench_home.h"
#include "large_answers.h"
#include "peers/pipe_peer.h"
#include "peers/rapidjson_peer.h"

namespace {

void Ours(benchmark::State& state, const std::string& text) {
  const BenchHome home;
  home.Configure(L"PlmClient.json", R"({"pipe":"tavo-bench-large"})");
  const PipeServer server(L"tavo-bench-large", text);
  CZALCmdInvoker invoker(L"New TAVO SolidWorks AddOn", L"");
  for (auto _ : state) {
    CJsonObject answer;
    if (!answer.CreateFrom(invoker.Invoke(L"QD_PLMGetcode", L""))) return state.SkipWithError("no answer");
    benchmark::DoNotOptimize(answer);
  }
}

void Bare(benchmark::State& state, const std::string& text) {
  const PipeServer server(L"tavo-bench-bare", text);
  const std::string request = R"({"jsonrpc":"2.0","id":1,"method":"invoke"})";
  std::string frame = server.FrameOf("1");
  const std::size_t content = frame.find('{');
  BlockingExchange exchange(server.Path());
  for (auto _ : state) {
    exchange.Run(request, frame);
    const auto document = RapidJsonAnswer(std::string_view(frame).substr(content));
    if (!document) return state.SkipWithError("not valid");
    benchmark::DoNotOptimize(document);
  }
}

}  // namespace

int main(int argc, char** argv) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  for (const LargeAnswer& sample : LargeAnswers()) {
    const std::string name = std::string("large/") + sample.name;
    const auto text = std::make_shared<const std::string>(sample.make());  // takes longer than a turn
    benchmark::RegisterBenchmark((name + "/ours").c_str(), [text](auto& state) { Ours(state, *text); })
        ->UseRealTime()
        ->Iterations(1);
    benchmark::RegisterBenchmark((name + "/bare").c_str(), [text](auto& state) { Bare(state, *text); })
        ->UseRealTime()
        ->Iterations(1);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
