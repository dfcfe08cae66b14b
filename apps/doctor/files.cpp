#include "files.h"

#include <algorithm>

#include "base/system_path.h"
#include "base/system_text.h"
#include "base/unique_handle.h"

namespace doctor {

FileContent ReadFileContent(const std::wstring& path, std::uint64_t limit) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const UniqueHandle file = OwnHandle(CreateFileW(SystemPath(path).c_str(), GENERIC_READ, kShareAll, nullptr,
                                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size{};
  if (!file || !GetFileSizeEx(file.get(), &size)) return {{}, GetLastError()};
  const std::uint64_t whole = static_cast<std::uint64_t>(size.QuadPart);
  FileContent content{std::string(std::min(whole, limit), '\0'), ERROR_SUCCESS};
  content.left_out = whole - content.bytes.size();
  const LARGE_INTEGER begin{.QuadPart = static_cast<LONGLONG>(content.left_out)};
  DWORD read = 0;
  if (!SetFilePointerEx(file.get(), begin, nullptr, FILE_BEGIN) ||
      !ReadFile(file.get(), content.bytes.data(), static_cast<DWORD>(content.bytes.size()), &read, nullptr)) {
    return {{}, GetLastError()};
  }
  content.bytes.resize(read);
  return content;
}

std::wstring WithSystemText(const std::wstring& text, DWORD error) {
  const std::wstring reason = SystemText(error);
  return text + (reason.empty() ? L"" : L": " + reason) + L" (error " + std::to_wstring(error) + L")";
}

}  // namespace doctor
