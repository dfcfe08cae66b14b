/// @file The application object of the DLL.
#pragma once

#include <windows.h>

#include <string>

#include "CDisplayErrorMsg.h"
#include "CZALCmdInvoker.h"

/// The DLL's start-up and shut-down, its title and its message boxes. One per process.
class CSolidWorksAddInApp {
 public:
  static CSolidWorksAddInApp& Instance() noexcept;

  /// Called when the DLL is loaded. @return false if the system has no free thread-local slot.
  bool InitInstance() noexcept;

  /// Called when the DLL is unloaded.
  void ExitInstance() noexcept;

  /// The title, in the language of the thread.
  std::wstring Title() const;

  /// The labels of the error box, in the language of the thread.
  CDisplayErrorMsg::Labels ErrorBoxLabels() const;

  /// The texts of the box about a PLM client that cannot be reached, in the language of the thread.
  CZALCmdInvoker::BoxTexts ClientBoxTexts() const;

  /// Shows `text` in a modal box with an OK button and the exclamation icon. The caption is the title, the
  /// owner the thread's active window.
  /// @return the button that closed the box: IDOK, or 0 if no box could be shown.
  int ShowMessageBox(const std::wstring& text) const;

  /// Whether no thread is inside a method of the DLL.
  bool CanUnload() const noexcept;
};
