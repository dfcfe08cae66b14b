#include "configuration/log_files.h"

#include <algorithm>

#include "CFileHelper.h"
#include "base/file_attributes.h"
#include "base/system_path.h"
#include "base/unique_handle.h"

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// @return ERROR_SUCCESS, or why the file cannot be opened.
DWORD Open(const std::wstring& path, DWORD disposition, DWORD flags = 0) {
  const UniqueHandle file = OwnHandle(
      CreateFileW(path.c_str(), FILE_APPEND_DATA | DELETE, kShareAll, nullptr, disposition, flags, nullptr));
  return file ? ERROR_SUCCESS : GetLastError();
}

// @return ERROR_SUCCESS, or why the file cannot be opened as an appender does.
DWORD OpenToAppend(const std::wstring& path, DWORD disposition) {
  const UniqueHandle file =
      OwnHandle(CreateFileW(path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, disposition, 0, nullptr));
  return file ? ERROR_SUCCESS : GetLastError();
}

// The folder of `path`; empty if it has none.
std::wstring Parent(const std::wstring& path) {
  const std::size_t end = path.find_last_of(L"\\/");
  return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

// A name that nothing else has, in `folder`.
std::wstring TrialPath(const std::wstring& folder) {
  return SystemPath(folder + L"\\tavo-trial-" + std::to_wstring(GetCurrentProcessId()));
}

DWORD TryToMakeFolderIn(const std::wstring& folder) {
  const std::wstring trial = TrialPath(folder);
  if (!CreateDirectoryW(trial.c_str(), nullptr)) return GetLastError();
  RemoveDirectoryW(trial.c_str());
  return ERROR_SUCCESS;
}

}  // namespace

void MadeLogFiles::MakeFolder(const std::wstring& folder) { CFileHelper::CreateFolder(folder, false); }

DWORD MadeLogFiles::TryToOpen(const std::wstring& path) { return OpenToAppend(path, OPEN_ALWAYS); }

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
  if (IsFolder(folder)) return Open(TrialPath(folder), CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
  if (IsFile(folder)) return ERROR_DIRECTORY;
  std::wstring parent = Parent(folder);
  while (!parent.empty() && FileAttributes(parent) == INVALID_FILE_ATTRIBUTES) parent = Parent(parent);
  if (parent.empty()) return ERROR_PATH_NOT_FOUND;
  return IsFile(parent) ? ERROR_DIRECTORY : TryToMakeFolderIn(parent);
}
