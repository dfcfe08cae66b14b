#include "plm_client/json_text.h"

#include "detail/rapidjson_config.h"
// After the configuration, which must come first.
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace plm_client {
namespace {

/// The member `name` of `object`; null if there is no such member.
const rapidjson::Value& Member(const rapidjson::Value& object, const char* name) {
  static const rapidjson::Value null_value;
  if (!object.IsObject()) return null_value;
  const auto member = object.FindMember(name);
  return member == object.MemberEnd() ? null_value : member->value;
}

std::string Text(const rapidjson::Value& object, const char* name) {
  const rapidjson::Value& value = Member(object, name);
  if (!value.IsString()) throw std::runtime_error(std::string("the request has no text \"") + name + "\"");
  return {value.GetString(), value.GetStringLength()};
}

}  // namespace

std::string JsonString(std::string_view text) {
  rapidjson::StringBuffer written;
  rapidjson::Writer<rapidjson::StringBuffer>(written).String(text.data(),
                                                             static_cast<rapidjson::SizeType>(text.size()));
  return {written.GetString(), written.GetSize()};
}

void ReadRequest(std::string_view message, Request& request) {
  rapidjson::Document json;
  json.Parse<rapidjson::kParseValidateEncodingFlag>(message.data(), message.size());
  if (json.HasParseError()) throw std::runtime_error("the request is not valid JSON");
  if (Text(json, "jsonrpc") != "2.0") throw std::runtime_error("the request is not JSON-RPC 2.0");
  const rapidjson::Value& id = Member(json, "id");
  if (!id.IsUint64()) throw std::runtime_error("the request has no numeric id");
  request.id = id.GetUint64();
  const std::string method = Text(json, "method");
  if (method != "invoke") throw UnknownMethod("there is no method \"" + method + "\"");
  request.command = Text(Member(json, "params"), "command");
  request.text = Text(Member(json, "params"), "request");
}

}  // namespace plm_client
