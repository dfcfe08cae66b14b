/// @file JSON files.
#pragma once

#include <string>

#include "detail/rapidjson_config.h"

/// The content of the UTF-8 file at `path`, with or without a byte-order mark.
/// @throws CZALException 0xA3013001: names the path and the system's reason where the file cannot be read,
///         the path, line, column (both from 1, the column in characters) and fault where it is malformed.
rapidjson::Document ReadJsonFile(const std::wstring& path);
