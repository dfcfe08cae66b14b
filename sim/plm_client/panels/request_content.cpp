#include "request_content.h"

#include "CStringHelper.h"
#include "json/json_parser.h"

namespace plm_panels {
namespace {

std::wstring WideText(const JsonValue& value) {
  return value.IsString() ? CStringHelper::UTF8ToUnicode({value.GetString(), value.GetStringLength()})
                          : std::wstring();
}

std::wstring TextMember(const JsonValue& object, const char* name) {
  const auto member = object.FindMember(name);
  return member == object.MemberEnd() ? std::wstring() : WideText(member->value);
}

plm_vault::Properties ObjectMember(const JsonValue& object, const char* name) {
  plm_vault::Properties properties;
  const auto found = object.FindMember(name);
  if (found == object.MemberEnd() || !found->value.IsObject()) return properties;
  for (const auto& member : found->value.GetObject()) {
    properties.emplace_back(WideText(member.name), WideText(member.value));
  }
  return properties;
}

}  // namespace

RequestContent ReadRequestContent(std::string_view text) {
  JsonDocument document;
  if (ParseJson(text, document) || !document.IsObject()) return {};
  return {.token = TextMember(document, "token"),
          .file_path = TextMember(document, "file_path"),
          .method = TextMember(document, "Method"),
          .extract_info = ObjectMember(document, "extract_info"),
          .created_material = ObjectMember(document, "backfill_info_from_create_material")};
}

}  // namespace plm_panels
