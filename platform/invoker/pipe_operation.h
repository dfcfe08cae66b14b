/// @file One overlapped read or write.
#pragma once

#include <windows.h>

#include <span>
#include <string_view>

#include "base/unique_handle.h"

namespace invoker {

/// An overlapped read or write on a pipe, one at a time. The destructor cancels a pending operation, so that
/// the system never writes into a buffer that no longer exists.
class PipeOperation {
 public:
  /// @throws NoAnswer if the event cannot be created.
  explicit PipeOperation(HANDLE pipe);
  PipeOperation(const PipeOperation&) = delete;
  PipeOperation& operator=(const PipeOperation&) = delete;
  ~PipeOperation();

  /// Starts to read into `buffer`, or to write `bytes`; both must outlive the operation.
  /// @throws NoAnswer if the client has closed the connection.
  void StartRead(std::span<char> buffer);
  void StartWrite(std::string_view bytes);

  /// Signalled when the operation that was started is done.
  HANDLE Done() const { return m_event.get(); }

  /// Whether an operation was started and not yet ended by Finish.
  bool IsPending() const { return m_isPending; }

  /// Whether the operation that was started is done. Asks nobody, so ask it before waiting.
  bool IsDone() const { return HasOverlappedIoCompleted(&m_overlapped); }

  /// Ends an operation that is perhaps not done: it has no effect any more.
  void Cancel() noexcept;

  /// Ends an operation that is done.
  /// @return the number of bytes that it transferred.
  /// @throws NoAnswer if the client has closed the connection.
  std::size_t Finish();

 private:
  void CheckStarted(BOOL completed);

  HANDLE m_pipe;
  UniqueHandle m_event;
  OVERLAPPED m_overlapped{};
  bool m_isPending = false;
};

}  // namespace invoker
