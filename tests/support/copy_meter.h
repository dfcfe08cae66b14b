/// @file How many bytes a module copies.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstring>

#include "import_patch.h"

/// Counts the bytes that a module copies by memcpy and memmove, during the lifetime of the object. What the
/// compiler copies without them, a few bytes at a time, is not counted. There may be one.
class CopyMeter {
 public:
  /// @param module imports memcpy and memmove.
  explicit CopyMeter(HMODULE module) : m_copy(module, "memcpy", &Copy), m_move(module, "memmove", &Move) {
    copied = 0;
  }

  long long Bytes() const { return copied; }

 private:
  static void* Copy(void* to, const void* from, std::size_t size) {
    copied += static_cast<long long>(size);
    return std::memcpy(to, from, size);
  }
  static void* Move(void* to, const void* from, std::size_t size) {
    copied += static_cast<long long>(size);
    return std::memmove(to, from, size);
  }

  static inline std::atomic<long long> copied = 0;
  const ImportPatch m_copy;
  const ImportPatch m_move;
};
