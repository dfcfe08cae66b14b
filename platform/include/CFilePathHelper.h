/// @file Splitting paths.
#pragma once

#include <string>

class CFilePathHelper {
 public:
  /// Splits `path` at its last `\` or `/` into `folder`, without that separator, and `name`. A path without
  /// a separator consists of the name only.
  static void SplitFilePath(const std::wstring& path, std::wstring& folder, std::wstring& name);
};
