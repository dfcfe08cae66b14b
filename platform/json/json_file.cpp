#include "json_file.h"

#include <algorithm>
#include <string_view>

#include "CStringHelper.h"
#include "CZALException.h"
#include "base/platform_codes.h"
#include "json/json_parser.h"
#include "whole_file.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::wstring DescribeFault(const std::wstring& path, std::string_view text, const JsonFault& fault) {
  const std::string_view before = text.substr(0, fault.offset);
  const auto line = 1 + std::ranges::count(before, '\n');
  const std::string_view in_line = before.substr(before.rfind('\n') + 1);
  const auto column = 1 + std::ranges::count_if(in_line, [](char byte) { return (byte & 0xC0) != 0x80; });
  return L"\"" + path + L"\", line " + std::to_wstring(line) + L", column " + std::to_wstring(column) +
         L": " + CStringHelper::UTF8ToUnicode(fault.reason);
}

}  // namespace

rapidjson::Document ReadJsonFile(const std::wstring& path) {
  const std::string content = ReadWholeFile(path);
  std::string_view text = content;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());

  rapidjson::Document document;
  if (const auto fault = ParseJson(text, document)) {
    throw CZALException(platform_code::kJsonWrongType, DescribeFault(path, text, *fault));
  }
  return document;
}
