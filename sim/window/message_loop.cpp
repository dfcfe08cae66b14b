#include "window/message_loop.h"

namespace window {

int MessageLoop::Run() {
  MSG message{};
  for (;;) {
    if (!PassOnWaiting()) {
      GetMessageW(&message, nullptr, WM_QUIT, WM_QUIT);
      return static_cast<int>(message.wParam);
    }
    m_onIdle();
    // What m_onIdle has left in the queue counts, too.
    MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  }
}

bool MessageLoop::PassOnWaiting() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    PassOn(message);
  }
  return true;
}

void MessageLoop::PassOn(MSG& message) {
  // A program may have more windows than the main one; each has dialog keys of its own.
  HWND window = GetAncestor(message.hwnd, GA_ROOT);
  const bool is_for_main = !window || window == m_mainWindow;
  if (m_accelerators && is_for_main && TranslateAcceleratorW(m_mainWindow, m_accelerators, &message)) return;
  if (IsDialogMessageW(window ? window : m_mainWindow, &message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

}  // namespace window
