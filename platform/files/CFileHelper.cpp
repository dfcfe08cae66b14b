#include "CFileHelper.h"

#include <windows.h>

#include <vector>

#include "base/file_attributes.h"
#include "base/system_path.h"

namespace {

// Walks up to the first folder that exists or can be created, then creates the folders below it.
void MakeWithParents(const std::wstring& system_path) {
  std::vector<std::wstring> missing;
  std::wstring folder = system_path;
  while (!CreateDirectoryW(folder.c_str(), nullptr) && GetLastError() == ERROR_PATH_NOT_FOUND) {
    const auto separator = folder.find_last_of(L"\\/");
    if (separator == std::wstring::npos || separator == 0) return;
    missing.push_back(folder);
    folder.resize(separator);
  }
  for (auto path = missing.rbegin(); path != missing.rend(); ++path) CreateDirectoryW(path->c_str(), nullptr);
}

}  // namespace

bool CFileHelper::CreateFolder(const std::wstring& path, bool failIfExists) {
  try {
    const std::wstring system_path = SystemPath(path);
    if (IsFolder(system_path)) return !failIfExists;
    MakeWithParents(system_path);
    return IsFolder(system_path);
  } catch (...) {
    return false;
  }
}
