#include "large_answers.h"

#include <algorithm>
#include <functional>

namespace {

constexpr std::size_t kFrameBytes = 64 * 1024 * 1024;

/// An answer, escaped as in the frame, such that the frame's content has exactly kFrameBytes bytes.
std::string Answer(const std::string& begin, const std::function<std::string(std::size_t)>& part,
                   const std::string& end) {
  const std::size_t around = std::string(R"({"jsonrpc":"2.0","id":1,"result":{"answer":""}})").size();
  const std::size_t room = kFrameBytes - around;
  std::string answer = begin;
  for (std::size_t number = 0;; ++number) {
    const std::string next = part(number);
    if (answer.size() + next.size() + end.size() > room) break;
    answer += next;
  }
  answer += end;
  return answer + std::string(room - answer.size(), ' ');
}

std::string Padded(std::size_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  return std::string(width - std::min(width, digits.size()), '1') + digits;
}

const LargeAnswer kAnswers[] = {
    {"OneString",
     [] { return Answer(R"({\"text\":\")", [](std::size_t) { return std::string(1000, 'x'); }, R"(\"})"); }},
    {"Paths",
     [] {
       return Answer(R"({\"OpenFile\":[\"\")",
                     [](std::size_t number) {
                       return R"(,\"C:\\\\PLM\\\\Getriebe\\\\Welle )" + std::to_string(number) +
                              R"(.sldprt\")";
                     },
                     "]}");
     }},
    {"Numbers2",
     [] {
       return Answer(R"({\"n\":[0)", [](std::size_t number) { return "," + std::to_string(number % 10); },
                     "]}");
     }},
    {"Numbers8",
     [] {
       return Answer(R"({\"n\":[0)", [](std::size_t number) { return "," + Padded(number % 10'000'000, 7); },
                     "]}");
     }},
    {"Members4M",
     [] {
       return Answer(R"({\"a\":0)",
                     [](std::size_t number) { return R"(,\")" + Padded(number, 8) + R"(\":1)"; }, "}");
     }},
};

}  // namespace

std::span<const LargeAnswer> LargeAnswers() { return kAnswers; }
