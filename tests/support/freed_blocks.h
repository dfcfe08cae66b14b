/// @file Blocks of memory that are free for the program and not yet for the system.
#pragma once

#include <windows.h>

#include <cstddef>

/// Holds back freed blocks, filled with a pattern, and gives them back later. It needs no memory.
class FreedBlocks {
 public:
  /// Takes a block that is freed. It may give back the one that was held the longest.
  /// @return whether all that it met was in order: `block` is not held already, and the pattern of what it
  ///         gave back has stayed. Only then the block is taken.
  bool Hold(HANDLE heap, void* block);

  /// Gives back all blocks. @return whether their patterns have stayed.
  bool ReleaseAll();

 private:
  struct Freed {
    HANDLE heap;
    void* block;
    std::size_t size;
  };

  static constexpr std::size_t kMost = 1024;

  static bool Release(Freed& freed);

  SRWLOCK m_lock = SRWLOCK_INIT;
  Freed m_blocks[kMost] = {};
  std::size_t m_next = 0;
};
