#include "console.h"

#include <windows.h>

#include <algorithm>

#include "CStringHelper.h"

namespace doctor {
namespace {

// A console takes about 30,000 characters at once.
constexpr std::size_t kMostCharacters = 8'000;

void WriteToConsole(HANDLE console, const std::wstring& text) {
  for (std::size_t at = 0; at < text.size(); at += kMostCharacters) {
    DWORD written = 0;
    const std::size_t count = std::min(text.size() - at, kMostCharacters);
    if (!WriteConsoleW(console, text.data() + at, static_cast<DWORD>(count), &written, nullptr)) return;
  }
}

void WriteTo(DWORD stream, const std::wstring& text) {
  HANDLE output = GetStdHandle(stream);
  DWORD mode = 0;
  if (GetConsoleMode(output, &mode)) {
    WriteToConsole(output, text);
    return;
  }
  const std::string bytes = CStringHelper::UnicodeToUTF8(text);
  DWORD written = 0;
  for (std::size_t at = 0; at < bytes.size(); at += written) {
    if (!WriteFile(output, bytes.data() + at, static_cast<DWORD>(bytes.size() - at), &written, nullptr) ||
        written == 0) {
      return;
    }
  }
}

}  // namespace

void Print(const std::wstring& text) { WriteTo(STD_OUTPUT_HANDLE, text); }

void PrintError(const std::wstring& text) { WriteTo(STD_ERROR_HANDLE, text); }

}  // namespace doctor
