#include "CCADFileHelper.h"

#include "CFilePathHelper.h"

bool CCADFileHelper::IsProeFile(const std::wstring& path, std::wstring& version, std::wstring& name) {
  std::wstring folder, file;
  CFilePathHelper::SplitFilePath(path, folder, file);

  const auto version_point = file.rfind(L'.');
  if (version_point == std::wstring::npos || version_point == 0 || version_point + 1 == file.size())
    return false;
  if (file.find_first_not_of(L"0123456789", version_point + 1) != std::wstring::npos) return false;

  // Before the version there must be a name and an extension, both not empty.
  const auto extension_point = file.rfind(L'.', version_point - 1);
  if (extension_point == std::wstring::npos || extension_point == 0 || extension_point + 1 == version_point) {
    return false;
  }
  version = file.substr(version_point + 1);
  name = file.substr(0, version_point);
  return true;
}
