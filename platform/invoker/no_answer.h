/// @file The exception of the invoker's parts.
#pragma once

#include <string>

namespace invoker {

/// Why a command gets no answer: one log line for an administrator, thrown by value.
struct NoAnswer {
  std::wstring reason;
};

}  // namespace invoker
