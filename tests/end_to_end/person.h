/// @file A person at the display: looks for windows, clicks, types, takes pictures.
#pragma once

#include <windows.h>

#include <string>

#include "temp_folder.h"

/// Uses the real mouse and keyboard of the display on which the programs run, so that nothing is shown to
/// work that a person could not do. What it looks for it awaits, for half a minute at most.
class Person {
 public:
  /// @param folder for files of the tools that move the mouse.
  explicit Person(const TempFolder& folder) : m_folder(folder) {}

  /// Waits for a visible window of any program, whose title contains `title`.
  /// @throws std::runtime_error with the titles of the windows that are there instead.
  HWND AwaitWindow(const std::wstring& title) const;

  /// Waits until the window is closed or hidden. @throws std::runtime_error with its title if it stays.
  void AwaitGone(HWND window) const;

  /// Presses keys that close the window, and again if it stays: the window system may pass keys to a window
  /// later than it shows it. @throws std::runtime_error with its title if it stays.
  void PressUntilGone(const std::string& keys, HWND window) const;

  /// Waits for the visible control `id` of the window, however deep in it, until it can be used.
  /// @throws std::runtime_error with the number.
  HWND AwaitControl(HWND window, int id) const;

  /// Clicks into the middle of the window or control.
  void Click(HWND control) const;

  /// Clicks at a point in the control, from its upper left corner.
  void ClickAt(HWND control, POINT place) const;

  /// Clicks at the first row of a list-view that has this text in the column; `adds` holds the key Ctrl,
  /// which adds it to what is chosen. @throws std::runtime_error with the texts of the column.
  void ClickRow(HWND list, int column, const std::wstring& text, bool adds = false) const;

  /// Clicks the button of a toolbar with this text, as soon as it can be used.
  /// @throws std::runtime_error with the texts of the buttons.
  void ClickButton(HWND toolbar, const std::wstring& text) const;

  /// Clicks the first button of a toolbar.
  void ClickFirstButton(HWND toolbar) const;

  /// Types a text into the window that has the focus.
  void Type(const std::wstring& text) const;

  /// Presses keys, named as the display names them: "Return", "ctrl+a", "alt+F4".
  void Press(const std::string& keys) const;

  /// Takes a picture of the whole display. @param path of a PNG file.
  void TakePicture(const std::wstring& path) const;

 private:
  void ScrollTo(HWND list, int row) const;
  void Do(const std::string& line) const;

  const TempFolder& m_folder;
};
