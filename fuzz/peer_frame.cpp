#include "peer_frame.h"

#include <algorithm>
#include <cctype>

namespace fuzz {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLongestHeader = 8192;
constexpr std::string_view kNameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789!#$%&'*+-.^_`|~";

/// Whether a line can begin like this.
bool IsBegin(std::string_view line) {
  const std::size_t name = line.find_first_not_of(kNameCharacters);
  if (name == line.npos) return true;
  return name > 0 && line[name] == ':' &&
         std::ranges::none_of(line, [](unsigned char c) { return c == 0x7F || (c < 0x20 && c != '\t'); });
}

bool IsContentLength(std::string_view name) {
  constexpr std::string_view kName = "content-length";
  return std::ranges::equal(name, kName, {}, [](unsigned char c) { return std::tolower(c); });
}

/// The number of bytes that the value of a Content-Length says; nothing if it is wrong.
std::optional<std::size_t> LengthOf(std::string_view value) {
  constexpr std::size_t kMostDigits = 8;
  constexpr std::size_t kMost = 64 * 1024 * 1024;
  while (!value.empty() && (value.front() == ' ' || value.front() == '\t')) value.remove_prefix(1);
  while (!value.empty() && (value.back() == ' ' || value.back() == '\t')) value.remove_suffix(1);
  if (value.empty() || value.find_first_not_of("0123456789") != value.npos) return std::nullopt;
  value.remove_prefix(std::min(value.find_first_not_of('0'), value.size()));
  if (value.size() > kMostDigits) return std::nullopt;
  std::size_t length = 0;
  for (const char digit : value) length = 10 * length + static_cast<std::size_t>(digit - '0');
  return length > kMost ? std::nullopt : std::optional(length);
}

}  // namespace

PeerFrame ReadFrameAsPeer(std::string_view bytes) {
  constexpr PeerFrame kRefused{.is_refused = true};
  const std::string_view header = bytes.substr(0, kLongestHeader);
  std::optional<std::size_t> length;
  std::size_t begin = 0;
  for (std::size_t end; (end = header.find(kLineEnd, begin)) != header.npos; begin = end + kLineEnd.size()) {
    const std::string_view line = header.substr(begin, end - begin);
    if (line.empty()) {
      if (!length) return kRefused;
      const std::string_view rest = bytes.substr(end + kLineEnd.size());
      if (rest.size() < *length) return {};
      return {.content = rest.substr(0, *length), .has_surplus = rest.size() > *length};
    }
    const std::size_t colon = line.find(':');
    if (!IsBegin(line) || colon == line.npos) return kRefused;
    if (!IsContentLength(line.substr(0, colon))) continue;
    const std::optional<std::size_t> said = LengthOf(line.substr(colon + 1));
    if (!said || length) return kRefused;
    length = said;
  }
  std::string_view last = header.substr(begin);
  if (last.ends_with('\r')) last.remove_suffix(1);
  return {.is_refused = !IsBegin(last) || bytes.size() > kLongestHeader};
}

std::string WriteFrame(Choices choices) {
  static constexpr const char* kNames[] = {"Content-Length",  "CONTENT-length",
                                           "Content-Length-", "Content-Lengt",
                                           "Content-Type",    "!#$%&'*+-.^_`|~",
                                           "Content Length",  "",
                                           "Content-Length ", "\x7F",
                                           "a\x80",           "(a)"};
  static constexpr const char* kValues[] = {
      "5",   " \t7 ", "0",   "00000000000000000000005", "67108864", "67108865", "+5",   "-5",   "5.",
      "5 5", "",      "0x5", "18446744073709551621",    "a\x80",    "a\tb",     "\x7F", "\x1F", "a:b"};
  static constexpr const char* kLineEnds[] = {"\r\n", "\r\n", "\r\n", "\r\n", "\r\n", "\r\n", "\r", "\n"};
  std::string frame;
  while (choices.Flag()) {
    frame += choices.Below(8) == 1 ? choices.Of(kNames) : "Content-Type";
    frame += (choices.Below(16) == 1 ? "" : ":") + std::string(choices.Of(kValues)) + choices.Of(kLineEnds);
  }
  frame += choices.Below(4) == 1 ? choices.Of(kNames) : kNames[0];
  frame +=
      ":" + std::string(choices.Below(4) == 1 ? choices.Of(kValues) : kValues[0]) + choices.Of(kLineEnds);
  return frame + choices.Of(kLineEnds) + std::string(choices.Below(8), 'x');
}

}  // namespace fuzz
