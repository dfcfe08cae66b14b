/// @file Moving and copying whole files. Paths may be of any length.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

/// The system's error number of a call that failed, which may be 0; nothing where the call succeeded.
using SystemError = std::optional<DWORD>;

/// Whether something exists at `path`: if not, why the system finds nothing there.
SystemError CheckExists(const std::wstring& path);

/// Moves the file `from` to `to`, replacing what is there. Never copies to another drive.
SystemError MoveOver(const std::wstring& from, const std::wstring& to);

/// Copies the file `from` to `to`, replacing what is there.
SystemError CopyOver(const std::wstring& from, const std::wstring& to);

/// What a log line says after "MoveFileEx from " or "CopyFile from ", up to the system's error number.
std::wstring TransferFailed(const std::wstring& from, const std::wstring& to);
