// The memory of an answer of 64 MiB: at the peak of receiving and parsing it, and what stays, beside
// RapidJSON's own for the same text. Prints a table: bytes of the answer as UTF-8; ours at the peak and
// afterwards; RapidJSON's.
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

#include "CJsonObject.h"
#include "CZALCmdInvoker.h"
#include "bench_home.h"
#include "heap_meter.h"
#include "large_answers.h"
#include "peers/pipe_peer.h"
#include "peers/rapidjson_peer.h"

namespace {

struct Usage {
  long long peak;
  long long kept;
};

/// The memory that `make` takes at most, and that its result takes.
template <class Make>
Usage Measure(HeapMeter& meter, Make make) {
  const long long before = meter.Current();
  meter.StartPeak();
  const auto result = make();
  return {meter.Peak() - before, meter.Current() - before};
}

void Run(const LargeAnswer& sample, HeapMeter& meter) {
  const BenchHome home;
  home.Configure(L"PlmClient.json", R"({"pipe":"tavo-bench-memory"})");
  const PipeServer server(L"tavo-bench-memory", sample.make());
  CZALCmdInvoker invoker(L"New TAVO SolidWorks AddOn", L"");
  const Usage ours = Measure(meter, [&] {
    auto answer = std::make_unique<CJsonObject>();
    if (!answer->CreateFrom(invoker.Invoke(L"QD_PLMGetcode", L""))) throw std::runtime_error("no answer");
    return answer;
  });
  const std::string frame = server.FrameOf("1");
  const std::string text = RapidJsonAnswerText(std::string_view(frame).substr(frame.find('{')));
  const Usage peer = Measure(meter, [&] { return std::make_unique<RapidJsonDocument>(text); });
  std::printf("%s %zu %lld %lld %lld %lld\n", sample.name, text.size(), ours.peak, ours.kept, peer.peak,
              peer.kept);
}

}  // namespace

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  HeapMeter meter;
  for (const LargeAnswer& sample : LargeAnswers()) Run(sample, meter);
}
