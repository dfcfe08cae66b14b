/// @file Simulating a lack of memory.
#pragma once

#include <cstddef>

/// For the life of the object, every `new` of at least `size` bytes by the thread that created it throws
/// std::bad_alloc. Only one object may exist at a time.
class FailingMemory {
 public:
  explicit FailingMemory(std::size_t size = 0);
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
  ~FailingMemory();
};
