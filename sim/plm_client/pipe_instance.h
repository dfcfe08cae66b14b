/// @file Making the pipe.
#pragma once

#include <string>

#include "base/unique_handle.h"

namespace plm_client {

/// Makes one of `instances` instances of the pipe at `path`. The first makes sure that the pipe is nobody
/// else's; hosts on other machines are refused.
/// @param security as in Settings.
/// @throws std::runtime_error that names the pipe where it cannot be made.
UniqueHandle MakePipeInstance(const std::wstring& path, const std::wstring& security, unsigned instances,
                              bool first);

}  // namespace plm_client
