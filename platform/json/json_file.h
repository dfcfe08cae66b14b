/// @file JSON files.
#pragma once

#include <string>

#include "detail/json_document.h"

/// The content of the UTF-8 file at `path`, with or without a byte-order mark.
/// @throws CZALException 0xA3013001. If the file cannot be read, it names the path and the system's reason.
///         If the file is malformed, it names the path, line, column (both from 1, the column in characters)
///         and fault.
JsonDocument ReadJsonFile(const std::wstring& path);
