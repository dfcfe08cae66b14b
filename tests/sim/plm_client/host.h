/// @file A host that only sends and receives bytes.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "base/unique_handle.h"

/// Opens the client's pipe and sends and receives bytes.
class Host {
 public:
  /// Opens the pipe `\\.\pipe\` + `pipe`; see IsConnected.
  explicit Host(const std::wstring& pipe);

  bool IsConnected() const { return m_pipe != nullptr; }
  HANDLE Pipe() const { return m_pipe.get(); }

  void Send(std::string_view bytes) const;

  /// Receives `count` bytes, or fewer if the client closes the connection.
  std::string Receive(std::size_t count) const;

  /// Receives a frame and returns its content; "closed" if the client has closed the connection.
  std::string ReceiveContent() const;

  /// Sends a command and returns the content of the answer's frame.
  std::string Ask(int id, const std::string& command, const std::string& request = "") const;

 private:
  UniqueHandle m_pipe;
};

/// Connects a host; waits until the pipe is served.
Host ConnectWhenServed(const std::wstring& pipe);

/// `content` in a frame.
std::string Frame(std::string_view content);

/// A pipe name that no other test uses.
std::wstring NewPipeName();
