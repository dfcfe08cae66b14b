#include "file_transfer.h"

#include "base/file_attributes.h"
#include "base/system_path.h"

namespace {

SystemError ErrorOf(BOOL succeeded) {
  if (succeeded) return std::nullopt;
  return GetLastError();
}

// Asks the folder for the attributes of what it holds, which needs no access to that itself.
bool IsListed(const std::wstring& path) {
  WIN32_FIND_DATAW entry;
  HANDLE search = FindFirstFileW(SystemPath(path).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  return true;
}

}  // namespace

bool Exists(const std::wstring& path) {
  const SystemError error = CheckExists(path);
  if (!error) return true;
  // The system says so of something that is there, but not only of that.
  return (*error == ERROR_ACCESS_DENIED || *error == ERROR_SHARING_VIOLATION) && IsListed(path);
}

SystemError CheckExists(const std::wstring& path) {
  return ErrorOf(FileAttributes(path) != INVALID_FILE_ATTRIBUTES);
}

SystemError MoveOver(const std::wstring& from, const std::wstring& to) {
  const std::wstring source = SystemPath(from);
  const std::wstring target = SystemPath(to);
  return ErrorOf(MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING));
}

SystemError CopyOver(const std::wstring& from, const std::wstring& to) {
  const std::wstring source = SystemPath(from);
  const std::wstring target = SystemPath(to);
  return ErrorOf(CopyFileW(source.c_str(), target.c_str(), FALSE));
}

std::wstring TransferFailureText(const std::wstring& from, const std::wstring& to) {
  return from + L" to " + to + L" failed. Get Last Error: ";
}
