#include "host_thread.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT kPatience = 5'000;  // milliseconds
constexpr wchar_t kWindowClass[] = L"invoker test host";

}  // namespace

Apartment::Apartment(std::optional<COINIT> kind)
    : m_entered(kind && SUCCEEDED(CoInitializeEx(nullptr, *kind))) {
  EXPECT_EQ(m_entered, kind.has_value());
}

Apartment::~Apartment() {
  if (m_entered) CoUninitialize();
}

HostWindow::HostWindow() {
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = &Procedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = kWindowClass;
  RegisterClassW(&window_class);
  m_window = CreateWindowW(kWindowClass, kWindowClass, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                           nullptr, nullptr, window_class.hInstance, nullptr);
  EXPECT_TRUE(m_window);
  SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  UpdateWindow(m_window);
  DrainMessages();
}

HostWindow::~HostWindow() {
  SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
  DestroyWindow(m_window);
  DrainMessages();
}

std::optional<LRESULT> HostWindow::Send() const {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutW(m_window, kSent, 0, 0, SMTO_NORMAL, kPatience, &result)) return std::nullopt;
  return static_cast<LRESULT>(result);
}

bool HostWindow::Repaint() const {
  const int before = m_paints;
  InvalidateRect(m_window, nullptr, TRUE);
  for (UINT waited = 0; waited < kPatience && m_paints == before; waited += 10) Sleep(10);
  return m_paints > before;
}

LRESULT HostWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!self) return DefWindowProcW(window, message, wParam, lParam);
  if (message == kSent) return self->m_onSent();
  if (message == WM_KEYDOWN || message == WM_LBUTTONDOWN) ++self->m_inputs;
  if (message == WM_PAINT) {
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    EndPaint(window, &paint);
    ++self->m_paints;
    self->m_onPaint();
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT WINAPI ThrowingDispatch::Dispatch(const MSG* message) {
  const auto procedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(message->hwnd, GWLP_WNDPROC));
  return procedure(message->hwnd, message->message, message->wParam, message->lParam);
}

void DrainMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}
