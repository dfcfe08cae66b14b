#include "freed_blocks.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr unsigned char kPattern = 0xDD;

bool HasPattern(const void* block, std::size_t size) {
  const auto* const bytes = static_cast<const unsigned char*>(block);
  return std::all_of(bytes, bytes + size, [](unsigned char c) { return c == kPattern; });
}

class Locked {
 public:
  explicit Locked(SRWLOCK& lock) : m_lock(lock) { AcquireSRWLockExclusive(&m_lock); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { ReleaseSRWLockExclusive(&m_lock); }

 private:
  SRWLOCK& m_lock;
};

}  // namespace

bool FreedBlocks::Hold(HANDLE heap, void* block) {
  const std::size_t size = HeapSize(heap, 0, block);
  const Locked locked(m_lock);
  const auto is_held = [block](const Freed& freed) { return freed.block == block; };
  // What is held begins with the pattern, and nearly nothing else does.
  if (HasPattern(block, std::min(size, sizeof(void*))) &&
      std::any_of(std::begin(m_blocks), std::end(m_blocks), is_held)) {
    return false;
  }
  Freed& oldest = m_blocks[m_next];
  if (!Release(oldest)) return false;
  oldest = {heap, block, size};
  std::memset(block, kPattern, size);
  m_next = (m_next + 1) % kMost;
  return true;
}

bool FreedBlocks::ReleaseAll() {
  const Locked locked(m_lock);
  return std::all_of(std::begin(m_blocks), std::end(m_blocks), Release);
}

bool FreedBlocks::Release(Freed& freed) {
  if (!freed.block) return true;
  if (!HasPattern(freed.block, freed.size)) return false;
  HeapFree(freed.heap, 0, freed.block);
  freed = {};
  return true;
}
