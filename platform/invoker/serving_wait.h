/// @file Waiting on the host's thread.
#pragma once

#include <windows.h>

#include <chrono>
#include <initializer_list>
#include <optional>

#include "base/unique_handle.h"
#include "wait_input.h"
#include "wait_message_filter.h"

namespace invoker {

/// The remaining time of a wait, as system calls take it.
class Deadline {
 public:
  explicit Deadline(std::optional<std::chrono::milliseconds> timeout);

  /// The remaining milliseconds; INFINITE without a timeout.
  DWORD Left() const;

 private:
  std::optional<ULONGLONG> m_end;
};

/// Waits for kernel objects. Meanwhile the thread serves COM calls into its apartment and messages that other
/// threads send, and its windows repaint. Mouse and key messages that arrive during the lifetime of the
/// object are dropped; Esc ends the waits. Other posted messages stay in the queue. Use one object for all
/// the waits of one command.
class ServingWait {
 public:
  /// @param timeout for all the waits together.
  explicit ServingWait(std::optional<std::chrono::milliseconds> timeout = std::nullopt);

  /// Waits until one of `handles` (at least one) is signalled.
  /// @return the index of the first signalled handle; nothing after the timeout.
  /// @throws WaitEnded if the user pressed Esc or the timeout of the object has passed; NoAnswer if the
  ///         system cannot wait; any exception of a window procedure called meanwhile.
  std::optional<std::size_t> Until(std::initializer_list<HANDLE> handles,
                                   std::optional<std::chrono::milliseconds> timeout = std::nullopt);

  /// Does without waiting what Until does while it waits. For a caller that has work without end.
  /// @throws like Until.
  void Serve();

  /// Waits for `time`, or until `handle`, if it is not null, is signalled.
  /// @return whether `handle` was signalled.
  /// @throws like Until.
  bool Pause(std::chrono::milliseconds time, HANDLE handle = nullptr);

 private:
  void ServeWindows();
  bool IsToLookForCalls() const;
  HANDLE Never();
  std::optional<std::size_t> WaitOnce(std::initializer_list<HANDLE> handles, DWORD milliseconds);

  const std::optional<std::chrono::milliseconds> m_timeout;
  const Deadline m_deadline;
  WaitInput m_input;
  bool m_isNew = true;                        // nothing was served since the queue was looked at first
  std::optional<WaitMessageFilter> m_filter;  // only in a single-threaded apartment
  bool m_foundPosted = false;                 // at the last look
  ULONGLONG m_lookedForCalls = 0;             // when the system looked for COM calls among them
  UniqueHandle m_never;                       // an event, made when it is needed first
};

}  // namespace invoker
