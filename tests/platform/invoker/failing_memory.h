/// @file Simulating a lack of memory.
#pragma once

/// For the life of the object, every `new` of the thread that created it throws std::bad_alloc. Only one
/// object may exist at a time.
class FailingMemory {
 public:
  FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
  ~FailingMemory();
};
