/// @file A pipe served by hand.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "base/unique_handle.h"

/// One instance of a pipe whose first connection is served by the test's own code: for what no client
/// would do. It has no security descriptor, as the pipes of clients in other languages.
class RawServer {
 public:
  /// @param serve gets the connected pipe, opened for blocking calls; the connection ends when it returns.
  RawServer(const std::wstring& pipe, std::function<void(HANDLE)> serve);
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;
  ~RawServer();

 private:
  const std::wstring m_path;
  UniqueHandle m_pipe;
  std::jthread m_thread;
};

/// Blocks until all is written; returns at once where the other side is gone.
void WriteAll(HANDLE pipe, std::string_view bytes);

/// Blocks until `count` bytes have come, or the other side is gone. @return what came.
std::string ReadBytes(HANDLE pipe, std::size_t count);

/// Opens the pipe as a host would.
UniqueHandle OpenPipe(const std::wstring& pipe);
