/// @file How RapidJSON is built here. Include this and never RapidJSON's headers first: the assertion
/// must be the same in every translation unit.
#pragma once

/// A violated assertion of RapidJSON raises CZALException 0xA3013001 that names the expression, header
/// path and line. It stays active in every build and never ends the host.
[[noreturn]] void RaiseRapidJsonAssertion(const char* expression, const char* file, int line);

#define RAPIDJSON_ASSERT(expression) \
  ((expression) ? static_cast<void>(0) : RaiseRapidJsonAssertion(#expression, __FILE__, __LINE__))
#define RAPIDJSON_ASSERT_THROWS

#include <rapidjson/document.h>
