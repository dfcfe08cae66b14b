/// @file An owner for memory that a system call allocated with LocalAlloc.
#pragma once

#include <windows.h>

#include <memory>

struct LocalMemoryFreer {
  void operator()(void* memory) const noexcept { LocalFree(memory); }
};

/// Frees the memory it holds.
template <class T>
using LocalMemory = std::unique_ptr<T, LocalMemoryFreer>;
