/// @file The message loop of a program with one main window.
#pragma once

#include <windows.h>

#include <functional>

namespace window {

/// Passes on the messages of its thread, with the keys of menus and of dialogs: accelerators, Tab, Alt.
class MessageLoop {
 public:
  /// @param main_window whose accelerators and controls the keys are for.
  /// @param accelerators may be null.
  MessageLoop(HWND main_window, HACCEL accelerators)
      : m_mainWindow(main_window), m_accelerators(accelerators) {}

  /// From now on, calls `action` whenever all messages have been handled.
  void OnIdle(std::function<void()> action) { m_onIdle = std::move(action); }

  /// Passes on messages until WM_QUIT. @return the exit code that is in it.
  int Run();

  /// Passes on the messages that are there. @return false if WM_QUIT was one of them; it is there again then.
  bool PassOnWaiting();

 private:
  void PassOn(MSG& message);

  HWND m_mainWindow;
  HACCEL m_accelerators;
  std::function<void()> m_onIdle = [] {};
};

}  // namespace window
