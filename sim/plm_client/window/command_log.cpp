#include "command_log.h"

#include <windows.h>

#include <array>

namespace plm_window {

std::wstring TimeOfDay() {
  std::array<wchar_t, 16> text{};
  GetTimeFormatEx(LOCALE_NAME_INVARIANT, 0, nullptr, L"HH':'mm':'ss", text.data(),
                  static_cast<int>(text.size()));
  return text.data();
}

std::wstring OnOneLine(const std::wstring& text) {
  constexpr std::size_t kLongest = 240;
  std::wstring line;
  for (const wchar_t character : text) {
    const bool is_blank = character == L' ' || character == L'\n' || character == L'\r';
    if (!is_blank || (!line.empty() && line.back() != L' ')) line += is_blank ? L' ' : character;
    if (line.size() == kLongest) return line + L"...";
  }
  return line;
}

}  // namespace plm_window
