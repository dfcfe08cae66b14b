#include "base/system_path.h"

#include <windows.h>

#include <cwctype>
#include <string_view>

namespace {
// The shortest path that some file call rejects: the path of a new folder must leave room for an 8.3 name.
constexpr std::size_t kShortestLongPath = 248;
constexpr std::wstring_view kLocalPrefix = LR"(\\?\)";
constexpr std::wstring_view kNetworkPrefix = LR"(\\?\UNC\)";

bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

bool IsDrivePath(std::wstring_view path) {
  return path.size() > 2 && std::iswalpha(path[0]) && path[1] == L':' && IsSeparator(path[2]);
}

// `\\server\share`; not a device such as `\\.\`, and not a path that already begins with `\\?\`.
bool IsNetworkPath(std::wstring_view path) {
  return path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2]) &&
         path[2] != L'?' && path[2] != L'.';
}

}  // namespace

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

std::wstring SystemPath(const std::wstring& path) {
  if (path.size() < kShortestLongPath) return path;
  const bool network = IsNetworkPath(path);
  if (!network && !IsDrivePath(path)) return path;
  // The system does not resolve `/`, `.` and `..` in this form, so they must be resolved first.
  const std::wstring normalized = FullPath(path);
  if (normalized.empty()) return path;
  return network ? std::wstring(kNetworkPrefix) + normalized.substr(2)
                 : std::wstring(kLocalPrefix) + normalized;
}
