/// @file Whether the client can be reached, asked without a command.
#pragma once

#include <chrono>
#include <string>

#include "configuration/client_configuration.h"

namespace invoker {

/// How far an attempt to reach the client came.
enum class ClientState {
  kNoPipe,      ///< nobody serves the pipe
  kBusy,        ///< all of its instances are in use
  kNotOpened,   ///< it cannot be opened, or is not a pipe
  kNotTrusted,  ///< it belongs to another user or terminal session
  kSilent,      ///< no answer came in time, or the client closed the connection
  kAnswers,
};

struct ClientProbe {
  std::wstring pipe;  ///< its full name; empty if not even that can be determined
  ClientState state;
  std::wstring reason;             ///< of a failure, in the words of the add-in's log; else empty
  std::chrono::milliseconds time;  ///< from the request to the answer
};

/// Opens the pipe as a command does, and asks for a sign of life: any message in a frame, also an error.
/// Neither starts the client's program nor waits for a busy pipe.
/// @param timeout  for the answer.
ClientProbe ProbeClient(const ClientConfiguration& configuration, std::chrono::milliseconds timeout);

/// Whether a client's program can be started from this path: one with a drive and a root folder, or that
/// begins with two separators (UNC, `\\?\`).
bool IsFullProgramPath(const std::wstring& path);

}  // namespace invoker
