#include "file_transfer.h"

#include "CFilePathHelper.h"

namespace {

SystemError ErrorOf(BOOL succeeded) {
  if (succeeded) return std::nullopt;
  return GetLastError();
}

}  // namespace

SystemError CheckExists(const std::wstring& path) {
  const std::wstring file = CFilePathHelper::ToSystemPath(path);
  return ErrorOf(GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES);
}

SystemError MoveOver(const std::wstring& from, const std::wstring& to) {
  const std::wstring source = CFilePathHelper::ToSystemPath(from);
  const std::wstring target = CFilePathHelper::ToSystemPath(to);
  return ErrorOf(MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING));
}

SystemError CopyOver(const std::wstring& from, const std::wstring& to) {
  const std::wstring source = CFilePathHelper::ToSystemPath(from);
  const std::wstring target = CFilePathHelper::ToSystemPath(to);
  return ErrorOf(CopyFileW(source.c_str(), target.c_str(), FALSE));
}

std::wstring TransferFailed(const std::wstring& from, const std::wstring& to) {
  return from + L" to " + to + L" failed. Get Last Error: ";
}
