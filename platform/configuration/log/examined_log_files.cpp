#include <algorithm>

#include "base/file_attributes.h"
#include "base/system_path.h"
#include "base/unique_handle.h"
#include "configuration/log_files.h"
#include "file_access.h"

namespace {

// The folder of `path`; empty if it has none.
std::wstring Parent(const std::wstring& path) {
  const std::size_t end = path.find_last_of(L"\\/");
  return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

// A name that nothing else has, in `folder`.
std::wstring TrialPath(const std::wstring& folder) {
  return SystemPath(folder + L"\\tavo-trial-" + std::to_wstring(GetCurrentProcessId()));
}

DWORD TryToMakeFileIn(const std::wstring& folder) {
  const UniqueHandle file = OwnHandle(CreateFileW(TrialPath(folder).c_str(), FILE_APPEND_DATA | DELETE, 0,
                                                  nullptr, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  return file ? ERROR_SUCCESS : GetLastError();
}

DWORD TryToMakeFolderIn(const std::wstring& folder) {
  const std::wstring trial = TrialPath(folder);
  if (!CreateDirectoryW(trial.c_str(), nullptr)) return GetLastError();
  RemoveDirectoryW(trial.c_str());
  return ERROR_SUCCESS;
}

}  // namespace

DWORD ExaminedLogFiles::TryToOpen(const std::wstring& path) {
  const DWORD error = Examine(path);
  if (error == ERROR_SUCCESS) m_usable.push_back(path);
  return error;
}

DWORD ExaminedLogFiles::Examine(const std::wstring& path) const {
  const DWORD error = OpenToAppend(path, OPEN_EXISTING);
  const std::wstring folder = Parent(path);
  if (error == ERROR_FILE_NOT_FOUND) return TryToWriteIn(folder);
  const bool is_made = std::ranges::any_of(
      m_madeFolders, [&folder](const std::wstring& made) { return SystemPath(made) == SystemPath(folder); });
  return error == ERROR_PATH_NOT_FOUND && is_made ? TryToWriteIn(folder) : error;
}

DWORD TryToWriteIn(const std::wstring& folder) {
  if (IsFolder(folder)) return TryToMakeFileIn(folder);
  if (IsFile(folder)) return ERROR_DIRECTORY;
  std::wstring parent = Parent(folder);
  while (!parent.empty() && FileAttributes(parent) == INVALID_FILE_ATTRIBUTES) parent = Parent(parent);
  if (parent.empty()) return ERROR_PATH_NOT_FOUND;
  return IsFile(parent) ? ERROR_DIRECTORY : TryToMakeFolderIn(parent);
}
