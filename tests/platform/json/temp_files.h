/// @file Temporary files, on every system.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "CStringHelper.h"

/// Converts between text and std::filesystem::path, independent of the locale.
inline std::filesystem::path ToPath(const std::wstring& text) {
  const std::string utf8 = CStringHelper::UnicodeToUTF8(text);
  return std::u8string(utf8.begin(), utf8.end());
}
inline std::wstring ToText(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return CStringHelper::UTF8ToUnicode({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

/// A temporary folder, deleted with its files.
class TempFiles {
 public:
  TempFiles() { std::filesystem::create_directory(m_folder); }
  TempFiles(const TempFiles&) = delete;
  TempFiles& operator=(const TempFiles&) = delete;
  ~TempFiles() { std::filesystem::remove_all(m_folder); }

  std::wstring Folder() const { return ToText(m_folder); }

  /// The path of the file `name`.
  std::wstring Path(const std::wstring& name) const { return ToText(m_folder / ToPath(name)); }

  /// Writes the file `name`. @return its path.
  std::wstring Write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(m_folder / ToPath(name), std::ios::binary) << bytes;
    return Path(name);
  }

 private:
  const std::filesystem::path m_folder = std::filesystem::temp_directory_path() /
                                         ToPath(L"json \u96f6 " + std::to_wstring(std::random_device{}()));
};
