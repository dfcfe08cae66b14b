/// @file The application object of the DLL.
#pragma once

#include <windows.h>

#include <string>

/// What the DLL is as a program, one per process: its start-up and shut-down, its title and its notices.
class CSolidWorksAddInApp {
 public:
  static CSolidWorksAddInApp& Instance() noexcept;

  /// Called when the DLL is loaded. @return false where the system has no room for another DLL's state.
  bool InitInstance() noexcept;

  /// Called when the DLL is unloaded.
  void ExitInstance() noexcept;

  /// The title, in the language of the thread.
  std::wstring Title() const;

  /// Shows `text` in a modal box with an OK button and the exclamation icon. The caption is the title, the
  /// owner the thread's active window.
  /// @return the button that ended the box: IDOK, or 0 where no box could be shown.
  int ShowMessageBox(const std::wstring& text) const;

  /// Whether no thread is inside a method of the DLL.
  bool CanUnload() const noexcept;
};
