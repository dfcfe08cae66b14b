#include "CFilePathHelper.h"

#include <utility>

void CFilePathHelper::SplitFilePath(const std::wstring& path, std::wstring& folder, std::wstring& name) {
  const auto separator = path.find_last_of(L"\\/");
  const bool has_folder = separator != std::wstring::npos;
  std::wstring new_folder = has_folder ? path.substr(0, separator) : std::wstring();
  name = has_folder ? path.substr(separator + 1) : path;
  folder = std::move(new_folder);
}
