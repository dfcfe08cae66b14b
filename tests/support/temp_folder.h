/// @file A folder of a test's own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A new, empty folder under the system's temporary folder, removed with all that is in it at the end.
/// Names are relative to it, separated by `\`, and may be long.
class TempFolder {
 public:
  /// @throws std::runtime_error where the folder cannot be made.
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  /// The folder's full path, without a separator at its end.
  const std::wstring& Path() const { return m_path; }

  /// The full path of `name`.
  std::wstring Path(std::wstring_view name) const;

  /// Makes the folder `name` with those above it. @return its full path.
  std::wstring MakeFolder(std::wstring_view name) const;

  /// Writes the file `name`, in place of what was there; the folders above it are made.
  /// @return its full path. @throws std::runtime_error naming the file where it cannot be written.
  std::wstring Write(std::wstring_view name, std::string_view bytes) const;

  /// Like Write, with the UTF-8 form of `text`.
  std::wstring WriteText(std::wstring_view name, std::wstring_view text) const;

  /// The bytes of the file `name`, also while another program has it open.
  /// @throws std::runtime_error naming the file where it cannot be read.
  std::string Read(std::wstring_view name) const;

  /// Like Read, taken as UTF-8.
  std::wstring ReadText(std::wstring_view name) const;

  /// Whether a file or folder `name` is there.
  bool Exists(std::wstring_view name) const;

  /// The names of the files and folders directly in `name` (the folder itself when empty), sorted.
  std::vector<std::wstring> List(std::wstring_view name = {}) const;

 private:
  std::wstring m_path;
};

/// The bytes of the file at the full path `path`; see TempFolder::Read.
std::string ReadFileBytes(const std::wstring& path);

/// Writes the file at the full path `path`; see TempFolder::Write.
void WriteFileBytes(const std::wstring& path, std::string_view bytes);
