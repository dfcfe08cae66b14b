#include "wait_input.h"

#include <algorithm>

#include "message_queue.h"

namespace invoker {
namespace {

constexpr MessageRange kKeys{WM_KEYFIRST, WM_KEYLAST};
constexpr MessageRange kTouchAndPen{WM_TOUCH, WM_POINTERROUTEDRELEASED};
constexpr MessageRange kInput[] = {
    {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK}, kKeys, {WM_MOUSEFIRST, WM_MOUSELAST}, kTouchAndPen};

}  // namespace

WaitInput::WaitInput() : m_foundMessages(MessagesInQueue()) {
  if (m_foundMessages == 0) return;
  for (const MessageRange range : kInput) {
    RemoveMessages(range, [this](const MSG& message) { m_earlier.push_back(message); });
  }
  // The ranges were read one after the other. The difference is right even if the clock has wrapped around.
  std::ranges::stable_sort(m_earlier,
                           [](const MSG& a, const MSG& b) { return static_cast<LONG>(a.time - b.time) < 0; });
}

WaitInput::~WaitInput() {
  try {
    if (MessagesInQueue() != 0) {
      for (const MessageRange range : kInput) RemoveMessages(range, [](const MSG&) {});
    }
  } catch (...) {  // of a window procedure that handled a sent message: a destructor must not throw
  }
  for (const MSG& message : m_earlier) {
    PostMessageW(message.hwnd, message.message, message.wParam, message.lParam);
  }
}

bool WaitInput::DropKeys() {
  bool escape = false;
  RemoveMessages(kKeys, [&escape](const MSG& message) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) escape = true;
  });
  return escape;
}

}  // namespace invoker
