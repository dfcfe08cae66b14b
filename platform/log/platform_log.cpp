#include "log/platform_log.h"

#include <algorithm>

#include "CLog.h"

namespace {

constexpr wchar_t kChannel[] = L"platform";
constexpr int kErrorLevel = 40000;
constexpr int kInformationLevel = 20000;

void Log(int level, const std::wstring& message, const std::source_location& place) noexcept {
  try {
    CLog::Print(place.file_name(), static_cast<int>(place.line()),
                PlainFunctionName(place.function_name()).c_str(), kChannel, level, message);
  } catch (...) {  // no memory for the names: a failing log must not disturb the host
  }
}

}  // namespace

void LogPlatformError(const std::wstring& message, std::source_location place) noexcept {
  Log(kErrorLevel, message, place);
}

void LogPlatformInformation(const std::wstring& message, std::source_location place) noexcept {
  Log(kInformationLevel, message, place);
}

std::string PlainFunctionName(std::string_view function) {
  constexpr std::string_view kOperator = "operator";
  // The name begins behind the result and ends before the parameters. Blanks and parentheses that are part of
  // template arguments or of an operator's name do not count.
  std::size_t begin = 0;
  std::size_t end = function.size();
  int depth = 0;
  for (std::size_t at = 0; at < end; ++at) {
    const char character = function[at];
    if (character == '<') ++depth;
    if (character == '>') --depth;
    if (depth != 0) continue;
    // A result that is a pointer or reference to a function or array stands around the name, as in
    // `void (* F())()`.
    const bool opens_name =
        character == '(' && at + 1 < function.size() && (function[at + 1] == '*' || function[at + 1] == '&');
    if (character == ' ' || opens_name) begin = at + 1;
    if (character == '(' && !opens_name) end = at;
    if (function.substr(at).starts_with(kOperator)) {
      const std::size_t symbol = at + kOperator.size();
      end = std::min(function.find('(', symbol + (function.substr(symbol).starts_with("()") ? 2 : 0)), end);
      break;
    }
  }
  std::string name(function.substr(begin, end - begin));
  constexpr std::string_view kNameless = "{anonymous}::";
  for (std::size_t at = name.find(kNameless); at != std::string::npos; at = name.find(kNameless)) {
    name.erase(at, kNameless.size());
  }
  return name.erase(0, name.find_first_not_of("*&"));
}
