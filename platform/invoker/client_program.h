/// @file Starting the client.
#pragma once

#include <string>

#include "base/unique_handle.h"

namespace invoker {

/// Starts `program`, a full path, without arguments, in its own folder. It inherits no handles, and the
/// system shows no error box if it cannot be started.
/// @return its process.
/// @throws NoAnswer if it cannot be started.
UniqueHandle StartClientProgram(const std::wstring& program);

}  // namespace invoker
