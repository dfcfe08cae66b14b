/// @file Reaching the client.
#pragma once

#include "base/unique_handle.h"
#include "client_configuration.h"
#include "serving_wait.h"

namespace invoker {

/// Opens the client's pipe. Where there is no such pipe the client's program, if one is configured, is
/// started and awaited; where all its instances are busy they are awaited for two seconds at most.
/// @return the pipe, which belongs to this process's user. The server may identify this process, not
///         impersonate it.
/// @throws NoAnswer where the client cannot be reached, or the pipe belongs to another user.
UniqueHandle ConnectToClient(const ClientConfiguration& configuration, ServingWait& wait);

}  // namespace invoker
