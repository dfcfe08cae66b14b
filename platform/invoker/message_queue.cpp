#include "message_queue.h"

namespace invoker {

WORD MessagesInQueue() { return HIWORD(GetQueueStatus(QS_ALLINPUT)); }

NewMessage::NewMessage() : m_message(RegisterWindowMessageW(L"TAVO look at the message queue")) {
  if (m_message != 0) PostThreadMessageW(GetCurrentThreadId(), m_message, 0, 0);
}

NewMessage::~NewMessage() {
  if (m_message == 0) return;
  try {
    RemoveMessages({m_message, m_message}, [](const MSG&) {});
  } catch (...) {  // of a window procedure that handled a sent message: a destructor must not throw
  }
}

}  // namespace invoker
