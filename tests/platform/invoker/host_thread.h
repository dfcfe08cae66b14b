/// @file A COM apartment and a window, as a thread of the host has them.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <atomic>
#include <functional>
#include <optional>

#include "import_patch.h"

/// Initializes COM on this thread for the life of the object, or does nothing for std::nullopt.
class Apartment {
 public:
  explicit Apartment(std::optional<COINIT> kind);
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();

 private:
  const bool m_entered;
};

/// A visible window of this thread that counts its paints and inputs.
class HostWindow {
 public:
  HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow();

  /// The message that runs the action of OnSent.
  static constexpr UINT kSent = WM_APP + 1;

  HWND Handle() const { return m_window; }
  int PaintCount() const { return m_paints; }
  int InputCount() const { return m_inputs; }
  void OnSent(std::function<LRESULT()> action) { m_onSent = std::move(action); }
  void OnPaint(std::function<void()> action) { m_onPaint = std::move(action); }

  /// Sends kSent from another thread.
  /// @return the result of the action; std::nullopt if the window did not answer within five seconds.
  std::optional<LRESULT> Send() const;

  /// Invalidates the window from another thread. @return whether it painted within five seconds.
  bool Repaint() const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND m_window;
  std::atomic<int> m_paints = 0;
  std::atomic<int> m_inputs = 0;
  std::function<LRESULT()> m_onSent = [] { return 1; };
  std::function<void()> m_onPaint = [] {};
};

/// For the life of the object, an exception of a window procedure passes through DispatchMessage in this
/// program, as on some systems. Other systems catch it there.
class ThrowingDispatch {
 private:
  static LRESULT WINAPI Dispatch(const MSG* message);

  const ImportPatch m_patch{GetModuleHandleW(nullptr), "DispatchMessageW", &Dispatch};
};

/// Handles all messages in this thread's queue.
void DrainMessages();
