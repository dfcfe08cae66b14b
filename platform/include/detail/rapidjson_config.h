/// @file RapidJSON's configuration. Include this before any header of RapidJSON: the assertion must be the
/// same in every translation unit.
#pragma once

/// A failed assertion of RapidJSON throws CZALException 0xA3013001, which names the expression, the header
/// (its path in RapidJSON) and the line. Assertions are active in every build and never terminate the host.
[[noreturn]] void RaiseRapidJsonAssertion(const char* expression, const char* file, int line);

#define RAPIDJSON_ASSERT(expression) \
  ((expression) ? static_cast<void>(0) : RaiseRapidJsonAssertion(#expression, __FILE__, __LINE__))
#define RAPIDJSON_ASSERT_THROWS

#include <rapidjson/document.h>
