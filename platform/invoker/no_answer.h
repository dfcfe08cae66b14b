/// @file How the parts of the invoker fail.
#pragma once

#include <string>

namespace invoker {

/// Why a command gets no answer: one line for an administrator, thrown by value.
struct NoAnswer {
  std::wstring reason;
};

}  // namespace invoker
