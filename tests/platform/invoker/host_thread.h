/// @file What a host's thread has: an apartment, a window.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <atomic>
#include <functional>
#include <optional>

#include "import_patch.h"

/// COM on this thread for the life of the object; nothing for a thread without COM.
class Apartment {
 public:
  explicit Apartment(std::optional<COINIT> kind);
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();

 private:
  const bool m_entered;
};

/// A visible window of this thread that counts what it gets.
class HostWindow {
 public:
  HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow();

  /// The message that runs OnSent where another thread sends it.
  static constexpr UINT kSent = WM_APP + 1;

  HWND Handle() const { return m_window; }
  int PaintCount() const { return m_paints; }
  int InputCount() const { return m_inputs; }
  void OnSent(std::function<LRESULT()> action) { m_onSent = std::move(action); }
  void OnPaint(std::function<void()> action) { m_onPaint = std::move(action); }

  /// Sends kSent from another thread. @return what OnSent gave; nothing where it was not served for five
  ///         seconds.
  std::optional<LRESULT> Send() const;

  /// Makes the window due for painting, from another thread. @return whether it painted within five
  ///         seconds.
  bool Repaint() const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND m_window;
  std::atomic<int> m_paints = 0;
  std::atomic<int> m_inputs = 0;
  std::function<LRESULT()> m_onSent = [] { return 1; };
  std::function<void()> m_onPaint = [] {};
};

/// Lets what a window procedure throws leave DispatchMessage in this program, as some systems do; others end
/// it there.
class ThrowingDispatch {
 private:
  static LRESULT WINAPI Dispatch(const MSG* message);

  const ImportPatch m_patch{GetModuleHandleW(nullptr), "DispatchMessageW", &Dispatch};
};

/// Handles everything in this thread's queue.
void DrainMessages();
