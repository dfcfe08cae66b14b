/// @file How to reach the client.
#pragma once

#include <chrono>
#include <string>

namespace invoker {

struct ClientConfiguration {
  std::wstring pipe;     ///< the pipe's name, without `\\.\pipe\`
  std::wstring program;  ///< the program that serves the pipe, environment variables replaced by their
                         ///< values; empty: no program is started
  std::chrono::milliseconds start_timeout{15'000};
};

/// Reads the file `file` of the configuration `name`. A member that is missing or wrong gets its default. A
/// malformed file, members of a wrong type and unknown members are logged in one line.
/// @throws NoAnswer if the pipe's default name is needed and the user of this process cannot be determined.
ClientConfiguration ReadClientConfiguration(const std::wstring& name, const std::wstring& file);

}  // namespace invoker
