/// @file Starting the client.
#pragma once

#include <string>

#include "base/unique_handle.h"

namespace invoker {

/// Starts `program` without arguments, in its own folder. It inherits no handles, and the system shows no
/// error box if it cannot be started.
/// @param program a full path: with a drive, UNC, or with the prefix `\\?\`.
/// @return its process.
/// @throws NoAnswer if the path is not a full one or the program cannot be started.
UniqueHandle StartClientProgram(const std::wstring& program);

}  // namespace invoker
