/// @file Moving and copying whole files. Paths may be of any length.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

/// The system's error number of a failed call, which may be 0; nothing if the call succeeded.
using SystemError = std::optional<DWORD>;

/// Whether a file or folder exists at `path`, even if the system denies access to it.
bool Exists(const std::wstring& path);

/// Checks that the attributes of a file or folder at `path` can be read. @return why not, otherwise.
SystemError CheckExists(const std::wstring& path);

/// Moves the file `from` to `to`, replacing what is there. Never copies to another drive.
SystemError MoveOver(const std::wstring& from, const std::wstring& to);

/// Copies the file `from` to `to`, replacing what is there.
SystemError CopyOver(const std::wstring& from, const std::wstring& to);

/// The text of a log line between "MoveFileEx from " or "CopyFile from " and the system's error number.
std::wstring TransferFailureText(const std::wstring& from, const std::wstring& to);
