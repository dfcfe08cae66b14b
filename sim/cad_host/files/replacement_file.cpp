#include "replacement_file.h"

#include <windows.h>

#include <utility>

#include "base/file_attributes.h"
#include "base/system_path.h"
#include "cad_host/host_error.h"

namespace cad_host {
namespace {

[[noreturn]] void Fail(const std::wstring& path, const wchar_t* step) {
  const DWORD error = GetLastError();
  throw HostError(path + L": " + step + L": error " + std::to_wstring(error), HRESULT_FROM_WIN32(error));
}

/// A path beside the file `target` that is not in use. A file that a broken session left there stays.
std::wstring UnusedPath(const std::wstring& target) {
  for (int number = 1;; ++number) {
    std::wstring path = target + L".new" + std::to_wstring(number);
    if (FileAttributes(path) == INVALID_FILE_ATTRIBUTES) return path;
  }
}

}  // namespace

ReplacementFile::ReplacementFile(std::wstring target)
    : m_target(std::move(target)), m_path(UnusedPath(m_target)) {
  if (const std::size_t end = m_target.find_last_of(L"\\/");
      end != std::wstring::npos && !IsFolder(m_target.substr(0, end + 1))) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    Fail(m_target, L"cannot write, the folder does not exist");
  }
  const DWORD attributes = FileAttributes(m_target);
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY)) {
    SetLastError(ERROR_WRITE_PROTECT);
    Fail(m_target, L"cannot write, the file is read-only");
  }
}

ReplacementFile::~ReplacementFile() {
  if (!m_path.empty()) DeleteFileW(SystemPath(m_path).c_str());
}

void ReplacementFile::CopyFrom(const std::wstring& source) const {
  const std::wstring path = SystemPath(m_path);
  // The copy of a read-only file is to be changed.
  if (!CopyFileW(SystemPath(source).c_str(), path.c_str(), TRUE) ||
      !SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL)) {
    Fail(source, (L"cannot be copied to " + m_path).c_str());
  }
}

void ReplacementFile::Replace() {
  if (!MoveFileExW(SystemPath(m_path).c_str(), SystemPath(m_target).c_str(),
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    Fail(m_target, L"cannot write");
  }
  m_path.clear();
}

}  // namespace cad_host
