#include "base/file_attributes.h"

#include "base/system_path.h"

DWORD FileAttributes(const std::wstring& path) { return GetFileAttributesW(SystemPath(path).c_str()); }

bool IsFile(const std::wstring& path) {
  const DWORD attributes = FileAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = FileAttributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}
