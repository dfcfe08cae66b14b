/// @file The system's words for its error codes.
#pragma once

#include <windows.h>

#include <string>

/// The system's text for an error number or HRESULT, without blanks and line ends behind it; the empty string
/// if the system has none.
std::wstring SystemText(DWORD code);
