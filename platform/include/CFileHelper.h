/// @file Folders.
#pragma once

#include <string>

class CFileHelper {
 public:
  /// Creates the folder `path` and its missing parent folders.
  /// @param failIfExists whether an existing folder counts as a failure.
  /// @return whether the folder exists now and there was no failure. Never throws.
  static bool CreateFolder(const std::wstring& path, bool failIfExists);
};
