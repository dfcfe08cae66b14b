/// @file A pipe that the test itself serves.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "base/unique_handle.h"

/// One instance of a pipe. Code of the test serves its first connection and can break the protocol. The pipe
/// has no security descriptor, like the pipes of clients in other languages.
class RawServer {
 public:
  /// @param serve gets the connected pipe, for blocking calls. The connection ends when it returns.
  RawServer(const std::wstring& pipe, std::function<void(HANDLE)> serve);
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;
  ~RawServer();

 private:
  const std::wstring m_path;
  UniqueHandle m_pipe;
  std::jthread m_thread;
};

/// Blocks until all is written. Returns at once if the other side has disconnected.
void WriteAll(HANDLE pipe, std::string_view bytes);

/// Blocks until `count` bytes are read, or the other side has disconnected. @return the bytes.
std::string ReadBytes(HANDLE pipe, std::size_t count);

/// Opens the pipe like a host.
UniqueHandle OpenPipe(const std::wstring& pipe);
