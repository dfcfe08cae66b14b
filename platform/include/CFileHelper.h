/// @file Folders.
#pragma once

#include <string>

class CFileHelper {
 public:
  /// Makes the folder `path` and the folders above it that are missing.
  /// @param failIfExists whether a folder that is already there counts as a failure.
  /// @return whether the folder is there now. Never throws.
  static bool CreateFolder(const std::wstring& path, bool failIfExists);
};
