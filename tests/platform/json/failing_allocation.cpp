#include "failing_allocation.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool is_armed = false;
thread_local AllocationFault armed_fault;
thread_local std::size_t tried = 0;
thread_local std::ptrdiff_t blocks = 0;

bool MustFail() {
  if (!is_armed) return false;
  ++tried;
  return tried == armed_fault.first ||
         (armed_fault.all_later && armed_fault.first != 0 && tried > armed_fault.first);
}

}  // namespace

std::ptrdiff_t AllocatedBlocks() { return blocks; }

Attempt::Armed::Armed(AllocationFault fault, std::size_t& count) : m_count(count) {
  armed_fault = fault;
  tried = 0;
  is_armed = true;
}

Attempt::Armed::~Armed() {
  is_armed = false;
  m_count += tried;
}

// These replace the operators of the whole test program.
void* operator new(std::size_t size) {
  void* memory = MustFail() ? nullptr : std::malloc(size ? size : 1);
  if (!memory) throw std::bad_alloc();
  ++blocks;
  return memory;
}
void operator delete(void* memory) noexcept {
  if (memory) --blocks;
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
