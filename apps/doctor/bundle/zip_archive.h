/// @file Writing a zip archive.
#pragma once

#include <string>

namespace doctor {

/// The archive cannot be written: one line for the user.
struct BundleError {
  std::wstring text;
};

/// A new zip archive. It is complete after Close; without it the destructor removes the file.
class ZipArchive {
 public:
  /// @throws BundleError if there is such a file already, or it cannot be made.
  explicit ZipArchive(const std::wstring& path);
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;
  ~ZipArchive();

  /// Adds a file. @param name  in UTF-8, with `/` between folders. @throws BundleError.
  void Add(const std::string& name, const std::string& bytes);

  /// @throws BundleError.
  void Close();

 private:
  [[noreturn]] void Fail() const;

  std::wstring m_path;
  void* m_archive = nullptr;
};

}  // namespace doctor
