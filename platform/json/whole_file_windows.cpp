#include <windows.h>

#include <vector>

#include "CZALException.h"
#include "base/platform_codes.h"
#include "base/system_path.h"
#include "base/system_text.h"
#include "base/unique_handle.h"
#include "whole_file.h"

namespace {

CZALException Unreadable(const std::wstring& path) {
  const DWORD code = GetLastError();
  return {platform_code::kJsonWrongType,
          L"cannot read \"" + path + L"\": " + SystemText(code) + L" (error " + std::to_wstring(code) + L")"};
}

}  // namespace

std::string ReadWholeFile(const std::wstring& path) {
  const UniqueHandle file = OwnHandle(CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file) throw Unreadable(path);

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
