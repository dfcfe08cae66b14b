#include "freed_blocks.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr unsigned char kPattern = 0xDD;

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
  const Locked locked(m_lock);
  const auto is_held = [block](const Freed& freed) { return freed.block == block; };
  if (std::any_of(std::begin(m_blocks), std::end(m_blocks), is_held)) return false;
  Freed& oldest = m_blocks[m_next];
  if (!Release(oldest)) return false;
  oldest = {heap, block, HeapSize(heap, 0, block)};
  std::memset(block, kPattern, oldest.size);
  m_next = (m_next + 1) % kMost;
  return true;
}

bool FreedBlocks::ReleaseAll() {
  const Locked locked(m_lock);
  return std::all_of(std::begin(m_blocks), std::end(m_blocks), Release);
}

bool FreedBlocks::Release(Freed& freed) {
  if (!freed.block) return true;
  const auto* const bytes = static_cast<const unsigned char*>(freed.block);
  if (!std::all_of(bytes, bytes + freed.size, [](unsigned char c) { return c == kPattern; })) return false;
  HeapFree(freed.heap, 0, freed.block);
  freed = {};
  return true;
}
