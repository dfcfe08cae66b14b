/// @file The content of a test's folder with all folders in it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/file_attributes.h"
#include "temp_folder.h"

/// The files and folders in the folder `name` of `folder`, with their paths relative to `folder`. A folder's
/// path ends with a backslash; its content follows it. Otherwise sorted by name.
inline std::vector<std::wstring> ListTree(const TempFolder& folder, std::wstring_view name = {}) {
  std::vector<std::wstring> paths;
  for (const std::wstring& entry : folder.List(name)) {
    const std::wstring path = name.empty() ? entry : std::wstring(name) + L"\\" + entry;
    if (!IsFolder(folder.Path(path))) {
      paths.push_back(path);
      continue;
    }
    paths.push_back(path + L"\\");
    const std::vector<std::wstring> inside = ListTree(folder, path);
    paths.insert(paths.end(), inside.begin(), inside.end());
  }
  return paths;
}
