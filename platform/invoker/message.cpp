#include "message.h"

#include "CStringHelper.h"
#include "detail/json_document.h"
#include "json/json_parser.h"
#include "json/json_writer.h"
#include "no_answer.h"

namespace invoker {
namespace {

constexpr std::size_t kMaxErrorTextLength = 500;

const JsonValue* Find(const JsonValue& object, const char* name) {
  const auto member = object.FindMember(name);
  return member == object.MemberEnd() ? nullptr : &member->value;
}

std::wstring TextOf(const JsonValue& value) {
  return CStringHelper::UTF8ToUnicode({value.GetString(), value.GetStringLength()});
}

bool IsAnswerTo(const JsonValue& message, std::uint64_t id) {
  const JsonValue* answered = Find(message, "id");
  return answered && answered->IsNumber() && answered->GetDouble() == static_cast<double>(id);
}

/// The client's description of its error, without line breaks.
std::wstring Describe(const JsonValue& error) {
  std::wstring text = L"the client answered with an error";
  const JsonValue* code = Find(error, "code");
  if (code && code->IsInt()) text += L" " + std::to_wstring(code->GetInt());
  const JsonValue* message = Find(error, "message");
  if (message && message->IsString()) text += L": " + TextOf(*message).substr(0, kMaxErrorTextLength);
  for (wchar_t& c : text) {
    if (c < L' ') c = L' ';
  }
  return text;
}

}  // namespace

std::string MakeRequest(std::uint64_t id, std::wstring_view command, std::wstring_view json) {
  JsonBuffer text;
  JsonWriter writer(text);
  const auto write = [&writer](const char* key, std::string_view value) {
    writer.Key(key);
    writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
  };
  writer.StartObject();
  write("jsonrpc", "2.0");
  writer.Key("id");
  writer.Uint64(id);
  write("method", "invoke");
  writer.Key("params");
  writer.StartObject();
  write("command", CStringHelper::UnicodeToUTF8(command));
  write("request", CStringHelper::UnicodeToUTF8(json));
  writer.EndObject();
  writer.EndObject();
  return {text.GetString(), text.GetSize()};
}

std::string MakePing() { return R"({"jsonrpc":"2.0","id":1,"method":"ping"})"; }

std::wstring ReadAnswer(std::string content, std::uint64_t id) {
  JsonDocument message;
  if (ParseJsonInPlace(content, message)) throw NoAnswer{L"the client sent a message that is not valid JSON"};
  const JsonValue* version = message.IsObject() ? Find(message, "jsonrpc") : nullptr;
  if (!version || *version != "2.0") throw NoAnswer{L"the client sent a message that is not JSON-RPC 2.0"};
  if (Find(message, "method"))
    throw NoAnswer{L"the client sent a request or notification instead of the answer"};
  // Checked before the id: a client that could not read the request answers with an error for the id null.
  const JsonValue* error = Find(message, "error");
  if (error && error->IsObject()) throw NoAnswer{Describe(*error)};
  if (!IsAnswerTo(message, id)) throw NoAnswer{L"the client's answer does not have the id of the request"};

  const JsonValue* result = Find(message, "result");
  const JsonValue* answer = result && result->IsObject() ? Find(*result, "answer") : nullptr;
  if (!answer || !answer->IsString()) throw NoAnswer{L"the client's result has no string in \"answer\""};
  return TextOf(*answer);
}

}  // namespace invoker
