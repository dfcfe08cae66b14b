/// @file A connection to the client.
#pragma once

#include <cstdint>
#include <string>

#include "base/unique_handle.h"
#include "serving_wait.h"

namespace invoker {

/// An open connection, over which one request at a time is answered. After anything but an answer it must
/// be given up: what the client may still send must never answer a later request.
class PipeConnection {
 public:
  explicit PipeConnection(UniqueHandle pipe) : m_pipe(std::move(pipe)) {}

  /// Whether the next request may go over this connection: the client keeps it open, has read everything,
  /// and has sent nothing that was not awaited.
  bool IsUsable() const;

  /// Sends `request`, the frame of the request `id`, and waits for the answer.
  /// @throws NoAnswer where the client closes the connection or sends anything but the answer.
  std::wstring Ask(const std::string& request, std::uint64_t id, ServingWait& wait);

 private:
  std::string Exchange(const std::string& frame, ServingWait& wait);

  UniqueHandle m_pipe;
  bool m_inStep = true;  // no byte is left over, on either side
};

}  // namespace invoker
