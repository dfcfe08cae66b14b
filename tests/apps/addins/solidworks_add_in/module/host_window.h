/// @file A window of the host.
#pragma once

#include <windows.h>

/// A visible window of this thread that records whether it was ever disabled.
class HostWindow {
 public:
  HostWindow()
      : m_window(CreateWindowW(L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                               nullptr, nullptr, nullptr)) {
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnMessage));
  }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow() { DestroyWindow(m_window); }

  HWND Handle() const { return m_window; }
  bool WasDisabled() const { return m_wasDisabled; }

 private:
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* const host = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_ENABLE && !wparam) host->m_wasDisabled = true;
    return DefWindowProcW(window, message, wparam, lparam);
  }

  HWND m_window;
  bool m_wasDisabled = false;
};
