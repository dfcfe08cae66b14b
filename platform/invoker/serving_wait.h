/// @file Waiting on the host's thread.
#pragma once

#include <windows.h>

#include <chrono>
#include <initializer_list>
#include <optional>

#include "wait_message_filter.h"

namespace invoker {

/// Waits for kernel objects while the thread goes on serving what comes from outside: COM calls into its
/// apartment and messages that other threads send; its windows repaint. Input and everything else that is
/// posted stays in the queue. One object for all the waits of one command.
class ServingWait {
 public:
  ServingWait();

  /// Waits until one of `handles` (one at least) is signalled.
  /// @return the first that is, by its place; nothing where `timeout` passed.
  /// @throws NoAnswer where the system cannot wait; what a window of the thread throws that is served.
  std::optional<std::size_t> Until(std::initializer_list<HANDLE> handles,
                                   std::optional<std::chrono::milliseconds> timeout = std::nullopt);

  /// Waits for `time`, or until `handle`, if there is one, is signalled.
  /// @return whether it was.
  bool Pause(std::chrono::milliseconds time, HANDLE handle = nullptr);

 private:
  std::optional<WaitMessageFilter> m_filter;  // only in a single-threaded apartment
};

}  // namespace invoker
