#include "paths.h"

#include <windows.h>

#include "CStringHelper.h"

namespace cad_host {

std::wstring FullPath(const std::wstring& path) {
  if (path.empty()) return path;
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

bool SameName(const std::wstring& a, const std::wstring& b) {
  return CStringHelper::StringCompare(a, b, false) == 0;
}

std::wstring FileNameOf(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }

std::wstring BaseNameOf(const std::wstring& path) {
  const std::wstring name = FileNameOf(path);
  return name.substr(0, name.rfind(L'.'));
}

bool FileExists(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace cad_host
