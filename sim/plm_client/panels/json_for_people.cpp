#include "panels/json_for_people.h"

#include "CStringHelper.h"
#include "json/json_parser.h"
#include "json/json_writer.h"
// After the configuration, which must come first.
#include <rapidjson/prettywriter.h>

namespace plm_panels {
namespace {

TextFault FaultAt(std::string_view utf8, std::size_t offset, std::wstring reason) {
  const TextPosition position = PositionInText(utf8, offset);
  return {position.line, position.column, CStringHelper::UTF8ToUnicode(utf8.substr(0, offset)).size(),
          std::move(reason)};
}

}  // namespace

std::wstring TextFault::Description() const {
  return L"line " + std::to_wstring(line) + L", column " + std::to_wstring(column) + L": " + reason;
}

std::optional<TextFault> FaultOfAnswer(std::wstring_view text) {
  if (text.empty()) return std::nullopt;
  const std::string utf8 = CStringHelper::UnicodeToUTF8(text);
  JsonDocument document;
  if (const std::optional<JsonFault> fault = ParseJson(utf8, document)) {
    return FaultAt(utf8, fault->offset, CStringHelper::UTF8ToUnicode(fault->reason));
  }
  if (!document.IsObject()) return FaultAt(utf8, 0, L"the answer is no JSON object");
  return std::nullopt;
}

std::wstring ForReading(std::string_view text) {
  JsonDocument document;
  if (ParseJson(text, document)) return CStringHelper::UTF8ToUnicode(text);
  JsonBuffer buffer;
  rapidjson::PrettyWriter<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator> writer(buffer);
  writer.SetIndent(' ', 2);
  document.Accept(writer);
  return CStringHelper::UTF8ToUnicode({buffer.GetString(), buffer.GetSize()});
}

}  // namespace plm_panels
