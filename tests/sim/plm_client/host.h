/// @file A host of the simplest kind.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "base/unique_handle.h"

/// Opens the client's pipe and speaks bytes.
class Host {
 public:
  /// Opens the pipe `\\.\pipe\` + `pipe`; see IsConnected.
  explicit Host(const std::wstring& pipe);

  bool IsConnected() const { return m_pipe != nullptr; }
  HANDLE Pipe() const { return m_pipe.get(); }

  void Send(std::string_view bytes) const;

  /// What the client sends, `count` bytes or as many as come before it closes the connection.
  std::string Receive(std::size_t count) const;

  /// The content of the next frame.
  std::string ReceiveContent() const;

  /// Asks for a command and gives the content of the answer's frame.
  std::string Ask(int id, const std::string& command, const std::string& request = "") const;

 private:
  UniqueHandle m_pipe;
};

/// `content` in a frame.
std::string Frame(std::string_view content);

/// A pipe name that no other test uses.
std::wstring NewPipeName();
