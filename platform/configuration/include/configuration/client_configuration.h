/// @file How to reach the client: PlmClient.json.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "CJsonObject.h"

/// The name of the file.
inline constexpr wchar_t kClientFile[] = L"PlmClient.json";

struct ClientConfiguration {
  std::wstring pipe;     ///< the pipe's name, without `\\.\pipe\`; empty: the user's default pipe
  std::wstring program;  ///< the program that serves the pipe; empty: no program is started
  std::chrono::milliseconds start_timeout{15'000};
};

/// A file that can be read. A member that is missing or wrong has its default.
struct ClientFile {
  ClientConfiguration configuration;
  /// One text for each member of a wrong type and each unknown one: `"pipe" is not a string`.
  std::vector<std::wstring> faults;
};

/// Reads the members of `file`. Environment variables in the program are not replaced.
ClientFile ReadClientMembers(const CJsonObject& file);

/// Unknown members of `file` that resemble a known one: `"Client" is not known; "client" is`.
std::vector<std::wstring> FindClientSlips(const CJsonObject& file);

/// Reads the file at `path`; environment variables in the program are replaced by their values. A variable
/// that does not exist stays as it is written.
/// @throws CZALException if the file cannot be read or is not JSON; it names the path, line and column.
ClientFile ReadClientFile(const std::wstring& path);
