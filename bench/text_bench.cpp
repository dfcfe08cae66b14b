// Text converted between UTF-16 and UTF-8, beside the system's functions. Also built for the build machine's
// own system, where these are iconv.
#include <benchmark/benchmark.h>

#include <string>

#include "base/utf8.h"
#include "peers/system_text.h"
#include "sample_answers.h"

namespace {

constexpr std::size_t kBytes = 1'000'000;

#ifdef _WIN32
constexpr char kRows[] = "";
constexpr char kPeer[] = "system";
#else
constexpr char kRows[] = "native_";
constexpr char kPeer[] = "iconv";
#endif

void Register(const char* script_name, Script script) {
  const std::string bytes = SampleTextUtf8(script, kBytes);
  const std::wstring wide = utf8::Decode<wchar_t>(bytes);
  const auto add = [&](const char* row, const char* variant, auto job) {
    const std::string name = std::string(kRows) + row + "/" + script_name + "/" + variant;
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
  add("encode", kPeer, [](Wide text, Bytes) { return SystemEncode(text); });
  add("decode", "ours", [](Wide, Bytes text) { return utf8::Decode<wchar_t>(text); });
  add("decode", kPeer, [](Wide, Bytes text) { return SystemDecode(text); });
}

}  // namespace

int main(int argc, char** argv) {
  Register("Latin", Script::kLatin);
  Register("Chinese", Script::kChinese);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
