/// @file A temporary folder for one test.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A new, empty folder under the system's temporary folder. The destructor removes it with its content.
/// Names are relative to it, separated by `\`, and may be long.
class TempFolder {
 public:
  /// @throws std::runtime_error if the folder cannot be made.
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  /// The folder's full path, without a separator at its end.
  const std::wstring& Path() const { return m_path; }

  /// The full path of `name`.
  std::wstring Path(std::wstring_view name) const;

  /// Makes the folder `name` and its parents. @return its full path.
  std::wstring MakeFolder(std::wstring_view name) const;

  /// Writes the file `name` and makes its folders. Replaces an existing file.
  /// @return its full path. @throws std::runtime_error with the path if the file cannot be written.
  std::wstring Write(std::wstring_view name, std::string_view bytes) const;

  /// Like Write, with `text` as UTF-8.
  std::wstring WriteText(std::wstring_view name, std::wstring_view text) const;

  /// The bytes of the file `name`, even while another program has it open.
  /// @throws std::runtime_error with the path if the file cannot be read.
  std::string Read(std::wstring_view name) const;

  /// Like Read, for a file in UTF-8.
  std::wstring ReadText(std::wstring_view name) const;

  /// Whether there is a file or folder `name`.
  bool Exists(std::wstring_view name) const;

  /// The sorted names of the files and folders directly in the folder `name`, or in this folder if it is
  /// empty.
  std::vector<std::wstring> List(std::wstring_view name = {}) const;

 private:
  std::wstring m_path;
};

/// The bytes of the file at the full path `path`; see TempFolder::Read.
std::string ReadFileBytes(const std::wstring& path);

/// Writes the file at the full path `path`; see TempFolder::Write.
void WriteFileBytes(const std::wstring& path, std::string_view bytes);
