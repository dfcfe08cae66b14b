/// @file Tells tests where controls are on the screen.
#pragma once

#include <windows.h>

#include <string>

namespace plm_window {

/// A file with a line for each control: the window's title, the control's name, and its place on the screen
/// as left, top, width and height, separated by tabs. UTF-8.
class LayoutFile {
 public:
  LayoutFile(std::wstring path, std::wstring title) : m_path(std::move(path)), m_title(std::move(title)) {}

  void Add(const std::wstring& name, HWND control);

  /// Replaces the file. @throws std::runtime_error naming the file if it cannot be written.
  void Write() const;

 private:
  std::wstring m_path;
  std::wstring m_title;
  std::wstring m_lines;
};

}  // namespace plm_window
