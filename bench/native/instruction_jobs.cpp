// Does one job once, for counting the instructions of MeasuredJob: instruction_jobs JOB ours|peer
// Latin|Chinese It prints the input's size as bytes of UTF-8.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "CJsonObject.h"
#include "answer_jobs.h"
#include "base/utf8.h"
#include "framing.h"
#include "json/json_writer.h"
#include "message.h"
#include "peers/rapidjson_peer.h"
#include "peers/system_text.h"
#include "sample_answers.h"

/// The counting begins and ends with this function.
extern "C" [[gnu::noinline]] void MeasuredJob(const std::function<std::size_t()>& job, std::size_t& result) {
  result = job();
}

namespace {

constexpr std::size_t kBytes = 1'000'000;
constexpr std::size_t kFirstPiece = 16 * 1024;  // what a connection reads before it knows the length

struct Job {
  std::size_t bytes;
  std::function<std::size_t()> ours;
  std::function<std::size_t()> peer;
};

Job Reading(Script script) {
  const std::string utf8 = SampleAnswerUtf8(script, kBytes);
  return {utf8.size(), [wide = utf8::Decode<wchar_t>(utf8)] { return ReadPaths(wide); },
          [utf8] { return RapidJsonRead(utf8); }};
}

Job Writing(Script script) {
  const std::string utf8 = SampleAnswerUtf8(script, kBytes);
  const auto object = std::make_shared<CJsonObject>();
  object->CreateFrom(utf8::Decode<wchar_t>(utf8));
  const auto document = std::make_shared<RapidJsonDocument>(utf8);
  return {utf8.size(), [object] { return object->ToJson().size(); },
          [document] { return document->Write().size(); }};
}

Job Encoding(Script script) {
  const std::string utf8 = SampleTextUtf8(script, kBytes);
  const std::wstring wide = utf8::Decode<wchar_t>(utf8);
  return {utf8.size(), [wide] { return utf8::Encode<wchar_t>(wide).size(); },
          [wide] { return SystemEncode(wide).size(); }};
}

Job Decoding(Script script) {
  const std::string utf8 = SampleTextUtf8(script, kBytes);
  return {utf8.size(), [utf8] { return utf8::Decode<wchar_t>(utf8).size(); },
          [utf8] { return SystemDecode(utf8).size(); }};
}

/// The text of an answer, out of the bytes of a frame.
std::wstring ReadFrame(std::string_view frame) {
  invoker::FrameReader reader;
  reader.Append(frame.substr(0, kFirstPiece));
  const std::string_view rest = frame.substr(kFirstPiece);
  std::ranges::copy(rest, reader.Rest().begin());
  reader.Fill(rest.size());
  return invoker::ReadAnswer(reader.TakeContent(), 1);
}

Job Receiving(Script script) {
  std::string content = R"({"jsonrpc":"2.0","id":1,"result":{"answer":)";
  JsonBuffer quoted;
  JsonWriter writer(quoted);
  const std::string answer = SampleAnswerUtf8(script, kBytes);
  writer.String(answer.data(), static_cast<rapidjson::SizeType>(answer.size()));
  content += std::string(quoted.GetString(), quoted.GetSize()) + "}}";
  return {content.size(), [frame = invoker::MakeFrame(content)] { return ReadFrame(frame).size(); },
          [content] { return RapidJsonAnswerText(content).size(); }};
}

const std::map<std::string_view, Job (*)(Script)> kJobs = {{"read", Reading},
                                                           {"write", Writing},
                                                           {"encode", Encoding},
                                                           {"decode", Decoding},
                                                           {"receive", Receiving}};

}  // namespace

int main(int argc, char** argv) {
  const auto made = argc == 4 ? kJobs.find(argv[1]) : kJobs.end();
  if (made == kJobs.end()) {
    std::fprintf(stderr,
                 "usage: instruction_jobs read|write|encode|decode|receive ours|peer Latin|Chinese\n");
    return 2;
  }
  const Job job = made->second(argv[3] == std::string_view("Latin") ? Script::kLatin : Script::kChinese);
  const auto& variant = argv[2] == std::string_view("ours") ? job.ours : job.peer;
  if (variant() == 0) return 1;  // what is done at the first time only is not counted
  std::size_t result = 0;
  MeasuredJob(variant, result);
  std::printf("%zu\n", job.bytes);
}
