// Text converted between UTF-16 and UTF-8.
#include <benchmark/benchmark.h>

#include <string>

#include "base/utf8.h"
#include "peers/system_text.h"
#include "sample_answers.h"

namespace {

constexpr std::size_t kBytes = 1'000'000;

void Register(const char* script_name, Script script) {
  const std::wstring wide = SampleText(script, kBytes);
  const std::string bytes = utf8::Encode<wchar_t>(wide);
  const auto add = [&](const char* row, const char* variant, auto job) {
    const std::string name = std::string(row) + "/" + script_name + "/" + variant;
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      for (auto _ : state) {
        auto result = job(wide, bytes);
        benchmark::DoNotOptimize(result);
      }
      state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                              static_cast<std::int64_t>(bytes.size()));
    })->UseRealTime();
  };
  using Wide = const std::wstring&;
  using Bytes = const std::string&;
  add("encode", "ours", [](Wide text, Bytes) { return utf8::Encode<wchar_t>(text); });
  add("encode", "system", [](Wide text, Bytes) { return SystemEncode(text); });
  add("decode", "ours", [](Wide, Bytes text) { return utf8::Decode<wchar_t>(text); });
  add("decode", "system", [](Wide, Bytes text) { return SystemDecode(text); });
}

}  // namespace

int main(int argc, char** argv) {
  Register("Latin", Script::kLatin);
  Register("Chinese", Script::kChinese);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
