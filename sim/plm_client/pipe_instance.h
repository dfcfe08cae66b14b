/// @file Creates the pipe.
#pragma once

#include <string>

#include "base/unique_handle.h"

namespace plm_client {

/// Creates one of the `instances` instances of the pipe at `path`. Hosts on other machines are refused.
/// @param security as in Settings.
/// @param first whether this is the first instance: creating it fails if another process serves the pipe.
/// @throws std::runtime_error naming the pipe if it cannot be created.
UniqueHandle MakePipeInstance(const std::wstring& path, const std::wstring& security, unsigned instances,
                              bool first);

}  // namespace plm_client
