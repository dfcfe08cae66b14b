/// @file A connection to the client.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/unique_handle.h"
#include "pipe_operation.h"
#include "serving_wait.h"

namespace invoker {

/// An open connection, which handles one request at a time. After a failed request it must be closed: a late
/// answer must never be treated as the answer to a later request.
class PipeConnection {
 public:
  /// Makes all system objects that requests need.
  /// @throws NoAnswer if the system has none left.
  explicit PipeConnection(UniqueHandle pipe);

  /// Whether this connection can be used for the next request: the client keeps it open, has read everything,
  /// and has sent nothing but its answers. Asks nobody: a read that is always pending tells it.
  bool IsUsable() const;

  /// Allows the client to bring its windows to the foreground, if the system reports its process, and begins
  /// to send `request`, the frame of a request, which must live until Finish has ended. The system gives the
  /// right only for the time until the user's next input.
  /// @return false if the client has closed the connection; nothing was sent then.
  bool Begin(std::string_view request);

  /// Sends the rest of `request`, whose id is `id`, and waits for the answer.
  /// @throws NoAnswer if the client closes the connection or sends anything but the answer.
  std::wstring Finish(std::string_view request, std::uint64_t id, ServingWait& wait);

  /// Sends the rest of `request` and waits for the next message, whatever it is.
  /// @return its content.
  /// @throws NoAnswer if the client closes the connection or sends what is not a frame.
  std::string Exchange(std::string_view request, ServingWait& wait);

 private:
  /// Starts to read what comes next: the first bytes of the next answer, or what IsUsable must know. Nothing
  /// is pending then if the client has closed the connection.
  void ReadAhead() noexcept;

  // Enough for most answers with their header.
  static constexpr std::size_t kFirstBytes = 16 * 1024;

  UniqueHandle m_pipe;
  std::array<char, kFirstBytes> m_first;  // outlives the read into it
  PipeOperation m_reading;
  PipeOperation m_writing;
  ULONG m_server = 0;    // the process that serves the pipe, if the system reports it
  bool m_inSync = true;  // no bytes of the last request or answer are left
};

}  // namespace invoker
