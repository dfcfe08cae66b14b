/// @file The application object of the DLL.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>

/// What the DLL is as a program, one per process: its start-up and shut-down, its title, and which module
/// the thread at work takes resources from (see ModuleState).
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
  bool CanUnload() const noexcept { return m_states == 0; }

  /// The module that this thread takes resources from: that of the innermost ModuleState, and the program
  /// itself where there is none.
  HINSTANCE ResourceModule() const noexcept;

 private:
  friend class ModuleState;

  std::atomic<long> m_states = 0;
  DWORD m_slot = TLS_OUT_OF_INDEXES;  // the current module of each thread
};
