#include "block_ledger.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

BlockLedger::BlockLedger(ImportGate& gate, HMODULE module) : m_module(module) {
  current = this;
  gate.Redirect("malloc", &Allocate);
  gate.Redirect("calloc", &AllocateCleared);
  gate.Redirect("realloc", &Reallocate);
  gate.Redirect("_strdup", &Copy);
  gate.Redirect("free", &Free);
}

// The functions below go on without a ledger.
BlockLedger::~BlockLedger() { current = nullptr; }

std::string BlockLedger::Since(std::size_t mark) const {
  std::string text;
  for (const auto& [address, block] : m_blocks) {
    if (block.number <= mark) continue;
    text += "  " + std::to_string(block.size) + " bytes from";
    for (const ULONGLONG place : block.places) {
      char digits[32];
      std::snprintf(digits, sizeof digits, " %llx", place);
      text += digits;
    }
    text += "\n";
  }
  return text;
}

void* BlockLedger::Allocate(std::size_t size) {
  void* const block = std::malloc(size);
  if (current) current->Note(block, size);
  return block;
}

void* BlockLedger::AllocateCleared(std::size_t count, std::size_t size) {
  void* const block = std::calloc(count, size);
  if (current) current->Note(block, count * size);
  return block;
}

void* BlockLedger::Reallocate(void* block, std::size_t size) {
  if (current) current->m_blocks.erase(block);
  void* const moved = std::realloc(block, size);
  if (current) current->Note(moved, size);
  return moved;
}

char* BlockLedger::Copy(const char* text) {
  char* const copy = _strdup(text);
  if (current) current->Note(copy, std::strlen(text) + 1);
  return copy;
}

void BlockLedger::Free(void* block) {
  if (current) current->m_blocks.erase(block);
  std::free(block);
}

void BlockLedger::Note(void* block, std::size_t size) {
  if (!block) return;
  m_blocks[block] = {++m_last, size, m_remembers ? Places() : std::vector<ULONGLONG>()};
}

// As offsets in the module, each within the call.
std::vector<ULONGLONG> BlockLedger::Places() const {
  constexpr ULONG kMostFrames = 40;
  void* frames[kMostFrames];
  const USHORT count = RtlCaptureStackBackTrace(2, kMostFrames, frames, nullptr);
  const auto* const base = reinterpret_cast<const char*>(m_module);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(
      base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
  std::vector<ULONGLONG> places;
  for (USHORT index = 0; index < count; ++index) {
    const auto offset = static_cast<ULONGLONG>(static_cast<const char*>(frames[index]) - base);
    if (offset < headers->OptionalHeader.SizeOfImage) places.push_back(offset - 1);
  }
  return places;
}
