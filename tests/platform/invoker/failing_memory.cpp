#include "failing_memory.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<DWORD> failing_thread = 0;  // no thread has this id
std::atomic<std::size_t> failing_size = 0;

}  // namespace

FailingMemory::FailingMemory(std::size_t size) {
  failing_size = size;
  failing_thread = GetCurrentThreadId();
}
FailingMemory::~FailingMemory() { failing_thread = 0; }

// These replace the operators of the whole test program.
void* operator new(std::size_t size) {
  const bool fails = failing_thread == GetCurrentThreadId() && size >= failing_size;
  void* memory = fails ? nullptr : std::malloc(size ? size : 1);
  if (!memory) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
