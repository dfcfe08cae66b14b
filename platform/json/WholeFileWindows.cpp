#include <windows.h>

#include <memory>
#include <vector>

#include "CFilePathHelper.h"
#include "CZALException.h"
#include "PlatformCodes.h"
#include "WholeFile.h"

namespace {

std::wstring SystemReason(DWORD code) {
  wchar_t text[512];
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      code, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  const std::wstring reason(text, length);
  return reason.substr(0, reason.find_last_not_of(L" \r\n") + 1) + L" (error " + std::to_wstring(code) + L")";
}

CZALException Unreadable(const std::wstring& path) {
  return {platform_code::kJsonWrongType, L"cannot read \"" + path + L"\": " + SystemReason(GetLastError())};
}

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};

}  // namespace

std::string ReadWholeFile(const std::wstring& path) {
  const std::unique_ptr<HANDLE, HandleCloser> file(CreateFileW(
      CFilePathHelper::ToSystemPath(path).c_str(), GENERIC_READ,
      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr));
  if (file.get() == INVALID_HANDLE_VALUE) throw Unreadable(path);

  std::string content;
  std::vector<char> part(64 * 1024);
  for (;;) {
    DWORD size = 0;
    if (!ReadFile(file.get(), part.data(), static_cast<DWORD>(part.size()), &size, nullptr)) {
      throw Unreadable(path);
    }
    if (size == 0) return content;
    content.append(part.data(), size);
  }
}
