/// @file Connecting to the client.
#pragma once

#include "base/unique_handle.h"
#include "client_configuration.h"
#include "serving_wait.h"

namespace invoker {

/// Opens the client's pipe. If the pipe does not exist, starts the client's program, if one is configured,
/// and waits for the pipe. If all instances of the pipe are busy, waits for two seconds at most.
/// @return the pipe, which belongs to this process's user. The server may identify this process, not
///         impersonate it.
/// @throws NoAnswer if the client cannot be reached, or the pipe belongs to another user.
UniqueHandle ConnectToClient(const ClientConfiguration& configuration, ServingWait& wait);

}  // namespace invoker
