/// @file Writes all JSON texts of the project.
#pragma once

#include "detail/json_document.h"
// After the configuration, which must come first.
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

using JsonBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, ThrowingAllocator>;

/// Writes compact JSON: only the quote, the backslash and control characters are escaped. Throws
/// std::bad_alloc if memory runs out.
using JsonWriter = rapidjson::Writer<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;
