/// @file Moving and copying whole files. Paths may be of any length; results are system error numbers.
#pragma once

#include <windows.h>

#include <string>

/// @return ERROR_SUCCESS if something exists at `path`, else the system's error.
DWORD CheckExists(const std::wstring& path);

/// Moves the file `from` to `to`, replacing what is there. Never copies to another drive.
DWORD MoveOver(const std::wstring& from, const std::wstring& to);

/// Copies the file `from` to `to`, replacing what is there.
DWORD CopyOver(const std::wstring& from, const std::wstring& to);

/// What a log line says after "MoveFileEx from " or "CopyFile from ", up to the system's error number.
std::wstring TransferFailed(const std::wstring& from, const std::wstring& to);
