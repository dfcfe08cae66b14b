/// @file Paths as texts.
#pragma once

#include <string>

class CFilePathHelper {
 public:
  /// Splits `path` at its last `\` or `/` into `folder`, without that separator, and `name`. A path without
  /// a separator is all name.
  static void SplitFilePath(const std::wstring& path, std::wstring& folder, std::wstring& name);

  /// `path` in the form that file calls take without the limit of 260 characters (`\\?\...`); never for
  /// a text that a person reads. Short paths, relative ones and those already in that form stay as they
  /// are.
  static std::wstring ToSystemPath(const std::wstring& path);
};
