/// @file Counting the memory of the running test.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

#include "heap_check.h"

/// What is allocated in all heaps of this process, by the test, by the DLL under test and by the system's
/// libraries.
struct HeapUse {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};

inline HeapUse CountHeaps() {
  ReleaseFreedBlocks();
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  HeapUse use;
  for (HANDLE heap : heaps) {
    if (!HeapLock(heap)) continue;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
      if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
      ++use.blocks;
      use.bytes += entry.cbData;
    }
    HeapUnlock(heap);
  }
  return use;
}

/// How many blocks are allocated. Repeat the work many times, so that a leak is larger than other changes.
inline std::size_t HeapBlockCount() { return CountHeaps().blocks; }
