/// @file The memory of JSON documents, parsers and writers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

/// An allocator for RapidJSON that throws std::bad_alloc if memory runs out. RapidJSON's own allocator
/// returns null then, and the code that called it writes through the null pointer.
class ThrowingAllocator {
 public:
  static constexpr bool kNeedFree = true;

  /// Null if `size` is 0.
  void* Malloc(std::size_t size) { return size == 0 ? nullptr : ::operator new(size); }

  /// If this throws, the old block is unchanged.
  void* Realloc(void* block, std::size_t size, std::size_t new_size) {
    void* const new_block = Malloc(new_size);
    if (block && new_block) std::memcpy(new_block, block, std::min(size, new_size));
    Free(block);
    return new_block;
  }

  static void Free(void* block) noexcept { ::operator delete(block); }
};
