// An answer of the PLM client, read and written.
#include <benchmark/benchmark.h>

#include <map>
#include <stdexcept>

#include "CJsonObject.h"
#include "answer_jobs.h"
#include "peers/nlohmann_peer.h"
#include "peers/rapidjson_peer.h"
#include "peers/system_text.h"
#include "sample_answers.h"

namespace {

struct Sample {
  std::wstring wide;
  std::string utf8;
};

const Sample& SampleOf(Script script, std::size_t bytes) {
  static std::map<std::pair<Script, std::size_t>, Sample> samples;
  Sample& sample = samples[{script, bytes}];
  if (sample.wide.empty()) {
    sample = {SampleAnswer(script, bytes), SampleAnswerUtf8(script, bytes)};
    if (RapidJsonRead(sample.utf8) == 0) throw std::logic_error("the sample has no paths");
  }
  return sample;
}

template <class Job>
void Measure(benchmark::State& state, std::size_t bytes, Job job) {
  for (auto _ : state) {
    auto result = job();
    benchmark::DoNotOptimize(result);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes));
}

/// Registers the variants of a row for one input; "ours" and its peers see the same text.
void Register(const char* script_name, Script script, const char* size_name, std::size_t bytes) {
  const Sample& sample = SampleOf(script, bytes);
  const std::string input = std::string(script_name) + "/" + size_name;
  const auto add = [&](const std::string& row, const char* variant, auto job) {
    benchmark::RegisterBenchmark((row + "/" + input + "/" + variant).c_str(), [&sample,
                                                                               job](benchmark::State& state) {
      Measure(state, sample.utf8.size(), [&] { return job(sample); });
    })->UseRealTime();
  };
  add("read", "ours", [](const Sample& s) { return ReadPaths(s.wide); });
  add("read", "system", [](const Sample& s) { return RapidJsonReadWide(s.wide); });
  add("read", "rapidjson", [](const Sample& s) { return RapidJsonRead(s.utf8); });
  add("read", "nlohmann", [](const Sample& s) { return NlohmannRead(s.utf8); });

  const auto object = std::make_shared<CJsonObject>();
  object->CreateFrom(sample.wide);
  const auto document = std::make_shared<RapidJsonDocument>(sample.utf8);
  add("write", "ours", [object](const Sample&) { return object->ToJson(); });
  add("write", "system", [document](const Sample&) { return SystemDecode(document->Write()); });
  add("write", "rapidjson", [document](const Sample&) { return document->Write(); });
}

}  // namespace

int main(int argc, char** argv) {
  for (const auto& [size_name, bytes] :
       {std::pair{"1KB", 1'000u}, {"100KB", 100'000u}, {"10MB", 10'000'000u}}) {
    Register("Latin", Script::kLatin, size_name, bytes);
    Register("Chinese", Script::kChinese, size_name, bytes);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
