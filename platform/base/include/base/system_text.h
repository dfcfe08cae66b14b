/// @file The system's texts for its error codes.
#pragma once

#include <windows.h>

#include <string>

/// The system's text for an error number or HRESULT, without trailing blanks and line ends; the empty string
/// if the system has no text for it.
std::wstring SystemText(DWORD code);
