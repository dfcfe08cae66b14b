/// @file Writes a file without a moment in which it is not whole.
#pragma once

#include <string>

namespace cad_host {

/// A new file beside a target, which takes the target's place when it is whole.
class ReplacementFile {
 public:
  /// @param target a full path; the file need not exist.
  /// @throws HostError naming the target if it is read-only or its folder does not exist.
  explicit ReplacementFile(std::wstring target);
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// Removes the new file if it did not take the target's place.
  ~ReplacementFile();

  /// Where the new file is to be written. No file has this path yet.
  const std::wstring& Path() const { return m_path; }

  /// Copies the file `source` to Path(). @throws HostError naming the source if it cannot be copied.
  void CopyFrom(const std::wstring& source) const;

  /// Puts the new file in the place of the target.
  /// @throws HostError naming the target if it is in use or cannot be replaced; it stays as it was.
  void Replace();

 private:
  std::wstring m_target;
  std::wstring m_path;
};

}  // namespace cad_host
