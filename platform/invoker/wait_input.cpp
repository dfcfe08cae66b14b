#include "wait_input.h"

#include <algorithm>
#include <optional>

namespace invoker {
namespace {

struct MessageRange {
  UINT first, last;
};

constexpr MessageRange kKeys{WM_KEYFIRST, WM_KEYLAST};
constexpr MessageRange kTouchAndPen{WM_TOUCH, WM_POINTERROUTEDRELEASED};
constexpr MessageRange kInput[] = {
    {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK}, kKeys, {WM_MOUSEFIRST, WM_MOUSELAST}, kTouchAndPen};

/// Puts WM_QUIT back, which PeekMessage removes whatever range of messages it is asked for.
class QuitKeeper {
 public:
  QuitKeeper() = default;
  QuitKeeper(const QuitKeeper&) = delete;
  QuitKeeper& operator=(const QuitKeeper&) = delete;
  ~QuitKeeper() {
    if (m_code) PostQuitMessage(*m_code);
  }

  void Keep(const MSG& quit) { m_code = static_cast<int>(quit.wParam); }

 private:
  std::optional<int> m_code;
};

/// Removes the messages of `range` from this thread's queue and hands each to `take`.
template <class Take>
void RemoveMessages(MessageRange range, Take take) {
  QuitKeeper keeper;
  MSG message;
  while (PeekMessageW(&message, nullptr, range.first, range.last, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      keeper.Keep(message);
    } else {
      take(message);
    }
  }
}

}  // namespace

bool HasMessages() { return HIWORD(GetQueueStatus(QS_ALLINPUT)) != 0; }

WaitInput::WaitInput() : m_foundMessages(HasMessages()) {
  if (!m_foundMessages) return;
  for (const MessageRange range : kInput) {
    RemoveMessages(range, [this](const MSG& message) { m_earlier.push_back(message); });
  }
  // The ranges were read one after the other. The difference is right even if the clock has wrapped around.
  std::ranges::stable_sort(m_earlier,
                           [](const MSG& a, const MSG& b) { return static_cast<LONG>(a.time - b.time) < 0; });
}

WaitInput::~WaitInput() {
  try {
    if (HasMessages()) {
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
