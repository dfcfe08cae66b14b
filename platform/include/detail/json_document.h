/// @file The types of RapidJSON that this project uses: those that throw std::bad_alloc if memory runs out.
#pragma once

#include "detail/rapidjson_config.h"
#include "detail/throwing_allocator.h"

using JsonMemory = rapidjson::MemoryPoolAllocator<ThrowingAllocator>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonMemory, ThrowingAllocator>;
using JsonValue = JsonDocument::ValueType;
