/// @file How the client is reached.
#pragma once

#include <chrono>
#include <string>

namespace invoker {

struct ClientConfiguration {
  std::wstring pipe;     ///< the pipe's name, without `\\.\pipe\`
  std::wstring program;  ///< the program that serves it; empty: none is started
  std::chrono::milliseconds start_timeout{15'000};
};

/// Reads the configuration file `file` of the configuration `name`; what it leaves unsaid, or says
/// wrongly, is the default. A malformed file and members of a wrong type are told in one log line.
/// @throws NoAnswer where there is no default either: the user cannot be found out.
ClientConfiguration ReadClientConfiguration(const std::wstring& name, const std::wstring& file);

}  // namespace invoker
