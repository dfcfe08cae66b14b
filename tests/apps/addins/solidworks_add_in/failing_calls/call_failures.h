/// @file How the functions that the DLL imports fail, and why some are not made to.
#pragma once

#include <span>

/// What runs instead of a function when it fails.
struct CallFailure {
  const char* function;
  const void* failing;
};

/// The functions of the system, and how each fails.
std::span<const CallFailure> SystemFailures();

/// The functions that allocate memory, and how each fails.
std::span<const CallFailure> MemoryFailures();

/// Functions that no sweep makes fail.
struct UnsweptFunctions {
  const char* reason;
  std::span<const char* const> functions;
};

/// Functions that are called, but cannot fail, or whose failure has no meaning.
std::span<const UnsweptFunctions> FunctionsThatCannotFail();

/// Functions that no scenario calls.
std::span<const UnsweptFunctions> FunctionsThatAreNotCalled();

/// Methods of the host, as "Interface::Method", that no scenario calls.
std::span<const char* const> HostMethodsThatAreNotCalled();
