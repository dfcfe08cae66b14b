#include "message.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/utf8.h"
#include "message_writer.h"
#include "no_answer.h"
#include "peer_json.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {
namespace {

using Type = PeerValue::Type;

constexpr std::uint64_t kId = 7;

bool IsId(const PeerValue* value) {
  if (!value) return false;
  if (value->type == Type::kInteger) return value->text == std::to_string(kId);
  return value->type == Type::kDouble && value->number == static_cast<double>(kId);
}

/// The text of the answer in a message that the other parser has read; nothing if it is not an answer.
std::optional<std::string> AnswerIn(const PeerValue& message) {
  const PeerValue* const version = message.Find("jsonrpc");
  if (!version || *version != PeerString("2.0") || message.Find("method")) return std::nullopt;
  const PeerValue* const error = message.Find("error");
  if ((error && error->type == Type::kObject) || !IsId(message.Find("id"))) return std::nullopt;
  const PeerValue* const result = message.Find("result");
  const PeerValue* const answer = result ? result->Find("answer") : nullptr;
  if (!answer || answer->type != Type::kString) return std::nullopt;
  return answer->text;
}

void TryAnswer(std::string_view bytes) {
  const std::optional<PeerValue> message = ParseAsPeer(bytes);
  const std::optional<std::string> expected = message ? AnswerIn(*message) : std::nullopt;
  try {
    const std::wstring answer = invoker::ReadAnswer(std::string(bytes), kId);
    Require(expected && answer == utf8::Decode<wchar_t>(*expected), "only the answer's text is taken");
  } catch (const invoker::NoAnswer& refusal) {
    Require(!expected, "an answer is taken");
    Require(
        !refusal.reason.empty() && std::ranges::none_of(refusal.reason, [](wchar_t c) { return c < L' '; }),
        "the reason is one line");
  }
}

void TryRequest(std::string_view bytes) {
  const std::size_t half = bytes.size() / 2;
  const std::wstring command = utf8::Decode<wchar_t>(bytes.substr(0, half));
  const std::wstring json = utf8::Decode<wchar_t>(bytes.substr(half));
  const std::optional<PeerValue> request = ParseAsPeer(invoker::MakeRequest(kId, command, json));
  const PeerValue* const texts = request ? request->Find("params") : nullptr;
  const auto is = [&](const char* name, std::wstring_view text) {
    const PeerValue* const value = texts->Find(name);
    return value && *value == PeerString(utf8::Encode(text));
  };
  Require(texts && IsId(request->Find("id")) && is("command", command) && is("request", json),
          "a request carries its texts unchanged");
}

}  // namespace

void TryMessage(std::string_view bytes) {
  TryAnswer(bytes);
  TryAnswer(WriteMessage(Choices(bytes)));
  TryRequest(bytes);
}

}  // namespace fuzz
