/// @file Pictures of the display at chosen moments.
#pragma once

#include <filesystem>
#include <string>

namespace window {

/// Asks for pictures of the display, which the program that shows it can take, and waits for them: a file
/// NAME.wanted appears in a folder, and NAME.png is expected there. The file says where the window with the
/// keyboard is, in pixels: WIDTHxHEIGHT+LEFT+TOP.
class PictureTaker {
 public:
  /// @param folder which exists; empty: no pictures are taken.
  explicit PictureTaker(std::filesystem::path folder) : m_folder(std::move(folder)) {}

  /// Returns when the picture is there, or after ten seconds. Meanwhile the windows of the thread repaint,
  /// but take no input.
  void Take(const std::wstring& name) const;

 private:
  std::filesystem::path m_folder;
};

}  // namespace window
