/// @file Bytes over one connection.
#pragma once

#include <windows.h>

#include <atomic>
#include <chrono>
#include <string>
#include <string_view>

#include "base/unique_handle.h"

namespace plm_client {

/// One instance of the pipe, for one connection after another. Another thread can interrupt every wait.
class PipeStream {
 public:
  explicit PipeStream(UniqueHandle pipe);

  /// Waits for a host to open this instance. @return whether one did.
  bool Accept();

  /// Ends the connection; what the host has not read is lost to it.
  void Disconnect();

  /// Waits until the host has read everything that was sent, or is gone.
  void Flush() const { FlushFileBuffers(m_pipe.get()); }

  /// Appends what comes next to `bytes`, at most `limit` bytes of it. @return whether anything came.
  bool Read(std::string& bytes, std::size_t limit);

  /// Sends `bytes`, at most `pieceSize` with each write. @return whether all went out.
  bool Write(std::string_view bytes, std::size_t piece_size);

  /// @return whether the time passed without an interruption.
  bool Pause(std::chrono::milliseconds time) const;

  /// Ends the wait under way and every further one until Resume; from any thread.
  void Interrupt() const { SetEvent(m_interrupted.get()); }
  void Resume() const { ResetEvent(m_interrupted.get()); }

  /// Whether a host is connected; from any thread.
  bool IsConnected() const { return m_connected; }

 private:
  bool Finish(BOOL started, OVERLAPPED& operation, DWORD& moved) const;

  UniqueHandle m_pipe;
  UniqueHandle m_interrupted;
  std::atomic<bool> m_connected = false;
};

}  // namespace plm_client
