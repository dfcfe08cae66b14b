/// @file Connecting to the client.
#pragma once

#include <string>

#include "base/unique_handle.h"
#include "serving_wait.h"

namespace invoker {

/// Reads the configuration file `file` of the configuration `name` and opens the client's pipe. If the pipe
/// does not exist and `starts_client` is set, starts the client's program, if one is configured, and waits
/// for the pipe. If all instances of the pipe are busy, waits for two seconds at most.
/// @return the pipe, which belongs to this process's user and is served in this terminal session. The server
///         may identify this process, not impersonate it.
/// @throws ClientNotReached if there is no such pipe; NoAnswer if the client closes it at once; WaitEnded if
///         the user or the timeout of `wait` ended the wait for it; any exception of a window procedure
///         called meanwhile.
UniqueHandle ConnectToClient(const std::wstring& name, const std::wstring& file, bool starts_client,
                             ServingWait& wait);

/// The full name of the pipe `name`.
std::wstring PipePath(const std::wstring& name);

/// One attempt to open the pipe with the full name `path`. Null, with the reason as the last error, if it
/// fails.
UniqueHandle TryToOpenPipe(const std::wstring& path);

/// @throws NoAnswer if what was opened under the name `path` is not a pipe.
void CheckIsPipe(HANDLE opened, const std::wstring& path);

}  // namespace invoker
