#include "message_writer.h"

#include <cstdio>
#include <iterator>

namespace fuzz {
namespace {

/// A text of JSON with any characters.
std::string SomeText(Choices& choices) {
  std::string text = "\"";
  while (choices.Flag()) {
    static constexpr const char* kCharacters[] = {"a",      "\\n", "\\\"", "\xE9\x9B\xB6", "\\ud83d\\ude00",
                                                  "\\u0000"};
    const std::size_t character = choices.Below(256);
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(character));
    text += choices.Flag() ? escape : kCharacters[character % std::size(kCharacters)];
  }
  return text + "\"";
}

/// A value for a member of an answer: the right one, one that is nearly right, or any.
std::string SomeValue(std::size_t member, Choices& choices) {
  static constexpr const char* kNear[][8] = {
      {"\"2.0\"", "\"2\"", "2.0", "\"2.00\"", "\"\"", "[\"2.0\"]", "\"2.0\\u0000\"", "\"\\u0032.0\""},
      {"7", "7.0", "7.5", "-7", "\"7\"", "70e-1", "4294967303", "18446744073709551623"},
      {"{}", "{\"answer\":\"\"}", "\"answer\"", "{\"answer\":[\"a\"]}", "{\"answer\":null}",
       "{\"answer\":\"a\",\"answer\":1}", "{\"answer\":1,\"answer\":\"a\"}", "[{\"answer\":\"a\"}]"},
      {"{}", "[]", "\"\"", "{\"code\":-32601}", "{\"code\":\"1\"}", "{\"code\":1e300}", "{\"message\":7}",
       "0"},
      {"\"invoke\"", "\"\"", "{}", "[]", "0", "1", "true", "\"answer\""}};
  switch (choices.Below(8)) {
    case 0:
    case 1:
    case 2:
      if (member == 2) return "{\"answer\":" + SomeText(choices) + "}";
      if (member == 3) return "{\"code\":7,\"message\":" + SomeText(choices) + "}";
      return kNear[member][0];
    case 3:
      return "null";
    case 4:
      return choices.Flag() ? "true" : "false";
    default:
      return choices.Of(kNear[member]);
  }
}

}  // namespace

std::string WriteMessage(Choices choices) {
  static constexpr const char* kMembers[] = {"jsonrpc", "id", "result", "error", "method"};
  std::string message;
  const auto add = [&](std::size_t member) {
    message += std::string(message.empty() ? "" : ",") + "\"" + kMembers[member] +
               "\":" + SomeValue(member, choices);
  };
  for (std::size_t member = 0; member < 3; ++member) {
    if (choices.Below(8) != 1) add(member);
  }
  while (choices.Below(4) == 1) add(choices.Below(std::size(kMembers)));
  return "{" + message + "}";
}

}  // namespace fuzz
