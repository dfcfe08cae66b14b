/// @file How much memory this program has allocated.
#pragma once

#include <windows.h>

#include <malloc.h>

#include <atomic>
#include <cstdlib>

#include "import_patch.h"

/// Counts the bytes that this program takes from the C runtime's heap, during the lifetime of the object.
/// There may be one.
class HeapMeter {
 public:
  long long Current() const { return current; }
  long long Peak() const { return peak; }
  void StartPeak() { peak = current.load(); }

 private:
  static void Add(long long bytes) {
    const long long now = current += bytes;
    for (long long before = peak; now > before && !peak.compare_exchange_weak(before, now);) {
    }
  }
  static long long SizeOf(void* block) { return block ? static_cast<long long>(_msize(block)) : 0; }

  static void* Malloc(std::size_t size) {
    void* const block = real_malloc(size);
    Add(SizeOf(block));
    return block;
  }
  static void* Realloc(void* block, std::size_t size) {
    const long long before = SizeOf(block);
    void* const changed = real_realloc(block, size);
    if (changed || size == 0) Add(SizeOf(changed) - before);
    return changed;
  }
  static void Free(void* block) {
    Add(-SizeOf(block));
    real_free(block);
  }

  template <class Function>
  static Function* Real(const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"msvcrt"), name)));
  }

  // Not called by name, which would lead back to the functions above.
  static inline const auto real_malloc = Real<void*(std::size_t)>("malloc");
  static inline const auto real_realloc = Real<void*(void*, std::size_t)>("realloc");
  static inline const auto real_free = Real<void(void*)>("free");

  static inline std::atomic<long long> current = 0;
  static inline std::atomic<long long> peak = 0;

  const ImportPatch m_malloc{GetModuleHandleW(nullptr), "malloc", &Malloc};
  const ImportPatch m_realloc{GetModuleHandleW(nullptr), "realloc", &Realloc};
  const ImportPatch m_free{GetModuleHandleW(nullptr), "free", &Free};
};
