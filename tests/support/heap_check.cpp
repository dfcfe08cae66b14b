#include "heap_check.h"

#include <windows.h>

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <vector>

#include "freed_blocks.h"
#include "import_patch.h"

namespace {

// Set before any block is checked.
unsigned check_interval = 0;
void (*report_damage)(const char* what) = nullptr;

std::atomic<unsigned> checked_blocks = 0;
std::atomic<unsigned> blocks_until_look = 0;
std::atomic<bool> is_checking = false;

FreedBlocks freed_blocks;

void CheckHeap(HANDLE heap) {
  if (!HeapValidate(heap, 0, nullptr)) report_damage("a heap is damaged");
}

// Where a look takes n times as long as here, n times as many blocks are given back before the next one: a
// test that compares the times of small and large work must not measure the looks.
constexpr std::chrono::duration<double, std::milli> kShortLook(0.1);

void LookNowAndThen(HANDLE heap) {
  if (++checked_blocks < blocks_until_look) return;
  checked_blocks = 0;
  const auto before = std::chrono::steady_clock::now();
  CheckHeap(heap);
  const double looks = (std::chrono::steady_clock::now() - before) / kShortLook;
  blocks_until_look = check_interval * static_cast<unsigned>(std::max(looks, 1.0));
}

// Blocks of other heaps, which may be destroyed, and large ones are not held back.
bool IsHeldBack(HANDLE heap, const void* block) {
  constexpr SIZE_T kLarge = 64 * 1024;
  static void* const own = GetProcessHeap();
  static const auto runtime = reinterpret_cast<HANDLE>(_get_heap_handle());
  return (heap == own || heap == runtime) && HeapSize(heap, 0, block) < kLarge;
}

// First, because that names who gives the block back.
void CheckBlock(HANDLE heap, const void* block) {
  if (!HeapValidate(heap, 0, block)) report_damage("a damaged block is given back");
}

BOOL WINAPI CheckAndFree(HANDLE heap, DWORD flags, void* block) {
  if (!block || !is_checking) return HeapFree(heap, flags, block);
  CheckBlock(heap, block);
  LookNowAndThen(heap);
  if (!IsHeldBack(heap, block)) return HeapFree(heap, flags, block);
  if (!freed_blocks.Hold(heap, block))
    report_damage("a block is freed twice, or a freed one was written into");
  return TRUE;
}

void* WINAPI CheckAndReAlloc(HANDLE heap, DWORD flags, void* block, SIZE_T size) {
  if (block && is_checking) {
    CheckBlock(heap, block);
    LookNowAndThen(heap);
  }
  return HeapReAlloc(heap, flags, block, size);
}

}  // namespace

void StartHeapChecks(unsigned interval, void (*on_damage)(const char* what)) {
  check_interval = interval;
  report_damage = on_damage;
  is_checking = true;
  for (const wchar_t* const name : {L"msvcrt", L"combase", L"oleaut32"}) {
    const HMODULE library = LoadLibraryW(name);
    // For the rest of the program, which frees memory until its very end.
    new ImportPatch(library, "HeapFree", &CheckAndFree);
    new ImportPatch(library, "HeapReAlloc", &CheckAndReAlloc);
  }
}

void ReleaseFreedBlocks() {
  if (is_checking && !freed_blocks.ReleaseAll()) report_damage("a freed block was written into");
}

void CheckHeaps() {
  if (!is_checking) return;
  ReleaseFreedBlocks();
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  for (HANDLE heap : heaps) CheckHeap(heap);
}

void EndHeapChecks() { is_checking = false; }
