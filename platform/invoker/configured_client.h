/// @file The client that is configured for this process.
#pragma once

#include <string>

#include "configuration/client_configuration.h"

namespace invoker {

/// Reads the file `file` of the configuration `name`. A member that is missing or wrong gets its default. A
/// malformed file, members of a wrong type and unknown members are logged in one line.
/// @throws NoAnswer if the pipe's default name is needed and the user of this process cannot be determined.
ClientConfiguration ReadClientConfiguration(const std::wstring& name, const std::wstring& file);

}  // namespace invoker
