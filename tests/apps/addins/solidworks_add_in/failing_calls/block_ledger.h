/// @file The memory that the DLL holds.
#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "import_gate.h"

/// Knows the blocks of the C runtime that a module has allocated through a gate and not freed. At most one
/// object. The module must call the functions on one thread.
class BlockLedger {
 public:
  /// `gate` must outlive the module's last call.
  explicit BlockLedger(ImportGate& gate, HMODULE module);
  BlockLedger(const BlockLedger&) = delete;
  BlockLedger& operator=(const BlockLedger&) = delete;
  ~BlockLedger();

  std::size_t Count() const { return m_blocks.size(); }

  /// From now on remembers where blocks are allocated.
  void RememberPlaces() { m_remembers = true; }

  /// A mark before the blocks that are allocated from now on, for Since.
  std::size_t Mark() const { return m_last; }

  /// The blocks that are held and were allocated after `mark`: for each its size and the offsets in
  /// the module of the calls that led to it.
  std::string Since(std::size_t mark) const;

 private:
  struct Block {
    std::size_t number = 0;
    std::size_t size = 0;
    std::vector<ULONGLONG> places;
  };

  static void* Allocate(std::size_t size);
  static void* AllocateCleared(std::size_t count, std::size_t size);
  static void* Reallocate(void* block, std::size_t size);
  static char* Copy(const char* text);
  static void Free(void* block);

  void Note(void* block, std::size_t size);
  std::vector<ULONGLONG> Places() const;

  static inline BlockLedger* current = nullptr;
  const HMODULE m_module;
  bool m_remembers = false;
  std::size_t m_last = 0;
  std::map<void*, Block> m_blocks;
};
