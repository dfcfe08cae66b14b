#include "file_transfer.h"

#include "base/file_attributes.h"
#include "base/system_path.h"

namespace {

SystemError ErrorOf(BOOL succeeded) {
  if (succeeded) return std::nullopt;
  return GetLastError();
}

}  // namespace

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
