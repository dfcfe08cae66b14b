/// @file One read or write under way.
#pragma once

#include <windows.h>

#include <span>
#include <string_view>

#include "base/unique_handle.h"

namespace invoker {

/// An overlapped read or write on a pipe, one at a time. Its end cancels what is still under way, so that
/// the system never writes into a buffer that is gone.
class PipeOperation {
 public:
  /// @throws NoAnswer where the system has no event for it.
  explicit PipeOperation(HANDLE pipe);
  PipeOperation(const PipeOperation&) = delete;
  PipeOperation& operator=(const PipeOperation&) = delete;
  ~PipeOperation();

  /// Starts to read into `buffer`, or to write `bytes`; both must outlive the operation.
  /// @throws NoAnswer where the client has closed the connection.
  void StartRead(std::span<char> buffer);
  void StartWrite(std::string_view bytes);

  /// Signalled when the operation that was started is done.
  HANDLE Done() const { return m_event.get(); }

  bool IsUnderWay() const { return m_underWay; }

  /// Ends an operation that is done: the number of bytes it moved.
  /// @throws NoAnswer where the client has closed the connection.
  std::size_t Finish();

 private:
  void Started(BOOL completed);

  HANDLE m_pipe;
  UniqueHandle m_event;
  OVERLAPPED m_overlapped{};
  bool m_underWay = false;
};

}  // namespace invoker
