/// @file Files of other CAD systems.
#pragma once

#include <string>

class CCADFileHelper {
 public:
  /// Whether `path` names a file with a version number after its extension, such as "bolt.prt.12".
  /// @param version receives the version ("12"), @param name the file name without it ("bolt.prt"); both
  ///        unchanged if the result is false.
  static bool IsProeFile(const std::wstring& path, std::wstring& version, std::wstring& name);
};
