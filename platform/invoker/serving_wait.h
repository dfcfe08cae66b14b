/// @file Waiting on the host's thread.
#pragma once

#include <windows.h>

#include <chrono>
#include <initializer_list>
#include <optional>

#include "wait_message_filter.h"

namespace invoker {

/// Waits for kernel objects. Meanwhile the thread serves COM calls into its apartment and messages that other
/// threads send, and its windows repaint. Input and other posted messages stay in the queue. Use one object
/// for all the waits of one command.
class ServingWait {
 public:
  ServingWait();

  /// Waits until one of `handles` (at least one) is signalled.
  /// @return the index of the first signalled handle; nothing after the timeout.
  /// @throws NoAnswer if the system cannot wait; any exception of a window procedure called meanwhile.
  std::optional<std::size_t> Until(std::initializer_list<HANDLE> handles,
                                   std::optional<std::chrono::milliseconds> timeout = std::nullopt);

  /// Waits for `time`, or until `handle`, if it is not null, is signalled.
  /// @return whether `handle` was signalled.
  bool Pause(std::chrono::milliseconds time, HANDLE handle = nullptr);

 private:
  std::optional<WaitMessageFilter> m_filter;  // only in a single-threaded apartment
};

}  // namespace invoker
