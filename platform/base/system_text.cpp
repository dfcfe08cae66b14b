#include "base/system_text.h"

#include "base/local_memory.h"

std::wstring SystemText(DWORD code) {
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
      code, 0, reinterpret_cast<LPWSTR>(&buffer), 0, nullptr);
  const LocalMemory<wchar_t> owner(buffer);
  std::wstring text(buffer ? buffer : L"", length);
  text.erase(text.find_last_not_of(L" \t\r\n") + 1);
  return text;
}
