/// @file How much memory a module has allocated.
#pragma once

#include <windows.h>

#include <malloc.h>

#include <atomic>
#include <cstdlib>

#include "import_patch.h"

/// Counts what a module takes from the C runtime's heap, during the lifetime of the object. There may be one.
class HeapMeter {
 public:
  /// @param module imports malloc, calloc, realloc and free.
  explicit HeapMeter(HMODULE module = GetModuleHandleW(nullptr))
      : m_malloc(module, "malloc", &Malloc),
        m_calloc(module, "calloc", &Calloc),
        m_realloc(module, "realloc", &Realloc),
        m_free(module, "free", &Free) {
    current = peak = taken = allocations = 0;
  }

  /// The bytes that the module holds, without those from before.
  long long Current() const { return current; }

  /// The largest value of Current since StartPeak.
  long long Peak() const { return peak; }
  void StartPeak() { peak = current.load(); }

  /// How often the module took memory, and how many bytes in all, whatever it gave back.
  long long Allocations() const { return allocations; }
  long long Taken() const { return taken; }

 private:
  static void Add(long long bytes) {
    const long long now = current += bytes;
    for (long long before = peak; now > before && !peak.compare_exchange_weak(before, now);) {
    }
  }
  static long long SizeOf(void* block) { return block ? static_cast<long long>(_msize(block)) : 0; }

  /// A new block in place of one of so many bytes.
  static void* Took(void* block, long long before = 0) {
    const long long size = SizeOf(block);
    ++allocations;
    taken += size;
    Add(size - before);
    return block;
  }

  static void* Malloc(std::size_t size) { return Took(kMalloc(size)); }
  static void* Calloc(std::size_t count, std::size_t size) { return Took(kCalloc(count, size)); }
  static void* Realloc(void* block, std::size_t size) {
    const long long before = SizeOf(block);
    void* const changed = kRealloc(block, size);
    return changed || size == 0 ? Took(changed, before) : nullptr;
  }
  static void Free(void* block) {
    Add(-SizeOf(block));
    kFree(block);
  }

  template <class Function>
  static Function* Real(const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"msvcrt"), name)));
  }

  // Not called by name, which would lead back to the functions above.
  static inline const auto kMalloc = Real<void*(std::size_t)>("malloc");
  static inline const auto kCalloc = Real<void*(std::size_t, std::size_t)>("calloc");
  static inline const auto kRealloc = Real<void*(void*, std::size_t)>("realloc");
  static inline const auto kFree = Real<void(void*)>("free");

  static inline std::atomic<long long> current = 0;
  static inline std::atomic<long long> peak = 0;
  static inline std::atomic<long long> taken = 0;
  static inline std::atomic<long long> allocations = 0;

  const ImportPatch m_malloc;
  const ImportPatch m_calloc;
  const ImportPatch m_realloc;
  const ImportPatch m_free;
};
