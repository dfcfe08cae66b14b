/// @file The exceptions of the invoker's parts.
#pragma once

#include <string>

namespace invoker {

/// Why a command gets no answer: one log line for an administrator, thrown by value.
struct NoAnswer {
  std::wstring reason;
};

/// There is no connection to a client.
struct ClientNotReached : NoAnswer {};

/// The user or the command's timeout ended the wait.
struct WaitEnded : NoAnswer {};

}  // namespace invoker
