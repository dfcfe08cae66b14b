#include "json_file.h"

#include <string_view>

#include "CStringHelper.h"
#include "CZALException.h"
#include "base/platform_codes.h"
#include "json/json_parser.h"
#include "whole_file.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::wstring DescribeFault(const std::wstring& path, std::string_view text, const JsonFault& fault) {
  return L"\"" + path + L"\", " + DescribePositionInText(text, fault.offset) + L": " +
         CStringHelper::UTF8ToUnicode(fault.reason);
}

}  // namespace

JsonDocument ReadJsonFile(const std::wstring& path) {
  const std::string content = ReadWholeFile(path);
  std::string_view text = content;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());

  JsonDocument document;
  if (const auto fault = ParseJson(text, document)) {
    throw CZALException(platform_code::kJsonWrongType, DescribeFault(path, text, *fault));
  }
  return document;
}
