/// @file The user's input during a wait.
#pragma once

#include <windows.h>

#include <vector>

namespace invoker {

/// Drops the mouse and key messages that arrive for the windows of this thread during its lifetime: a click
/// made in impatience must not change the model afterwards. All other messages stay in the queue, in order.
/// The destructor puts back input that was in the queue before, behind all other posted messages.
class WaitInput {
 public:
  WaitInput();
  WaitInput(const WaitInput&) = delete;
  WaitInput& operator=(const WaitInput&) = delete;
  ~WaitInput();

  /// The kinds of messages that were in the queue at first.
  WORD FoundMessages() const { return m_foundMessages; }

  /// Drops the key messages that have arrived. Sent messages are handled meanwhile.
  /// @return whether Esc was pressed.
  bool DropKeys();

 private:
  const WORD m_foundMessages;
  std::vector<MSG> m_earlier;
};

}  // namespace invoker
