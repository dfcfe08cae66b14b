/// @file Reading a whole file. Opening a file and getting the reason of a failure differ between systems.
#pragma once

#include <string>

/// The bytes of the file at `path`, which may be of any length.
/// @throws CZALException 0xA3013001 that names the path and the system's reason.
std::string ReadWholeFile(const std::wstring& path);
