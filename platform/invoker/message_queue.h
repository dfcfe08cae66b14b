/// @file The message queue of this thread.
#pragma once

#include <windows.h>

#include <optional>

namespace invoker {

/// The kinds of messages in the queue, as flags such as QS_POSTMESSAGE. Cheaper than a look for each kind.
WORD MessagesInQueue();

struct MessageRange {
  UINT first, last;
};

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

/// Removes the messages of `range` and hands each to `take`. Sent messages are handled meanwhile.
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

/// Lets the system's next wait look at all messages in the queue, during the lifetime of the object. A wait
/// looks only if there is a new message, and a call of COM is a message that the host may have seen before,
/// in a PeekMessage that did not remove it: then it would not be served. So the object adds a message that is
/// new.
class NewMessage {
 public:
  NewMessage();
  NewMessage(const NewMessage&) = delete;
  NewMessage& operator=(const NewMessage&) = delete;
  ~NewMessage();

 private:
  UINT m_message;
};

}  // namespace invoker
