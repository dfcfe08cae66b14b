/// @file Lines of the log as PlatformHome returns them.
#pragma once

#include <windows.h>

#include <cwchar>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

/// "<hr=0x80004005>".
inline std::wstring CodeText(HRESULT code) {
  wchar_t text[20];
  std::swprintf(text, std::size(text), L"<hr=0x%lx>", static_cast<unsigned long>(code));
  return text;
}

/// "CHANNEL|LEVEL|LINE|CLASS::FUNCTION|TEXT".
inline std::wstring LogLine(std::wstring_view channel_and_level, int line, std::wstring_view class_name,
                            std::wstring_view function, std::wstring_view text) {
  std::wstring result(channel_and_level);
  result.append(L"|").append(std::to_wstring(line)).append(L"|");
  return result.append(class_name).append(L"::").append(function).append(L"|").append(text);
}

inline constexpr std::wstring_view kAddInClass = L"CSolidWorksAddIn";
inline constexpr std::wstring_view kDrawingHelperClass = L"CDrawingHelper";

/// "errormsg|ERROR|LINE|CSolidWorksAddIn::FUNCTION|TEXT<hr=0xCODE>"; without a code it ends with the text.
inline std::wstring ErrorLine(int line, std::wstring_view function, std::wstring_view text,
                              std::optional<HRESULT> code = {}, std::wstring_view class_name = kAddInClass) {
  return LogLine(L"errormsg|ERROR", line, class_name, function,
                 std::wstring(text) + (code ? CodeText(*code) : L""));
}

/// "infomsg|INFO|LINE|CLASS::FUNCTION|TEXT".
inline std::wstring InfoLine(int line, std::wstring_view class_name, std::wstring_view function,
                             std::wstring_view text) {
  return LogLine(L"infomsg|INFO", line, class_name, function, text);
}
