/// @file Counting the memory blocks of the running test.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

/// How many blocks are allocated in all heaps of this process, by the test, by the DLL under test and by the
/// system's libraries. Repeat the work many times, so that a leak is larger than other changes.
inline std::size_t HeapBlockCount() {
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  std::size_t blocks = 0;
  for (HANDLE heap : heaps) {
    if (!HeapLock(heap)) continue;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++blocks;
    }
    HeapUnlock(heap);
  }
  return blocks;
}
