/// @file Running out of memory.
#pragma once

/// Lets every `new` of the thread that made it throw std::bad_alloc, for the life of the object. One at a
/// time.
class FailingMemory {
 public:
  FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
  ~FailingMemory();
};
