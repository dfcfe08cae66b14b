/// @file Reads and writes the bytes of one connection.
#pragma once

#include <windows.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <string_view>

#include "base/unique_handle.h"

namespace plm_client {

/// One instance of the pipe; it serves one connection after another. Another thread can interrupt every wait.
class PipeStream {
 public:
  explicit PipeStream(UniqueHandle pipe);

  /// Waits for a host to open this instance. @return whether one did.
  bool Accept();

  /// Closes the connection; bytes that the host has not read are lost.
  void Disconnect();

  /// Waits until the host has read everything that was sent, or has disconnected.
  void Flush() const { FlushFileBuffers(m_pipe.get()); }

  /// Waits for bytes and appends at most `limit` of them to `bytes`. @return false if the connection has
  /// ended or the wait was interrupted.
  bool Read(std::string& bytes, std::size_t limit);

  /// Sends `bytes`, at most `piece_size` with each write. @return whether all bytes were sent.
  bool Write(std::string_view bytes, std::size_t piece_size);

  /// @return whether the time passed without an interruption.
  bool Pause(std::chrono::milliseconds time) const;

  /// Ends the current wait and every later one until Resume. May be called on any thread.
  void Interrupt() const { SetEvent(m_interrupted.get()); }

  /// Ends a connection that there is, and no later one. May be called on any thread.
  void InterruptConnection();

  /// Allows waits again.
  void Resume() const { ResetEvent(m_interrupted.get()); }

  /// Whether a host is connected. May be called on any thread.
  bool IsConnected() const { return m_connected; }

  /// Whether the host that is connected still has its end of the pipe open. May be called on any thread.
  bool HostIsThere() const { return PeekNamedPipe(m_pipe.get(), nullptr, 0, nullptr, nullptr, nullptr) != 0; }

 private:
  bool Finish(BOOL started, OVERLAPPED& operation, DWORD& moved) const;

  UniqueHandle m_pipe;
  UniqueHandle m_interrupted;
  std::mutex m_connectedMutex;  // between a look at m_connected and the interruption
  std::atomic<bool> m_connected = false;
};

}  // namespace plm_client
