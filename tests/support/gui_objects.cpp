#include "gui_objects.h"

#include <windows.h>

#include <intrin.h>

#include <algorithm>
#include <cstdint>

namespace {

/// An entry of the system's table of GDI objects.
struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;  // 0: no object
  std::uint8_t flags;
  std::uint64_t user_pointer;
};
constexpr std::size_t kGdiEntries = 0x4000;

// The table's address stands in the process environment block, which the header of the system does not
// describe so far.
const GdiEntry* GdiTable() {
  constexpr unsigned long kBlock = 0x60;  // in the thread environment block
  constexpr std::size_t kTable = 0xf8;
  const auto* const block = reinterpret_cast<const char*>(__readgsqword(kBlock));
  return *reinterpret_cast<const GdiEntry* const*>(block + kTable);
}

// The lower half of a USER handle is a place in a table; the system accepts it alone.
constexpr std::uintptr_t kFirstUserHandle = 0x20;
constexpr std::uintptr_t kEndOfUserHandles = 0xfff0;
constexpr std::uintptr_t kStep = 2;

template <class Handle, class IsObject>
std::size_t CountHandles(IsObject&& is_object) {
  std::size_t count = 0;
  for (std::uintptr_t handle = kFirstUserHandle; handle < kEndOfUserHandles; handle += kStep) {
    if (is_object(reinterpret_cast<Handle>(handle))) ++count;
  }
  return count;
}

bool IsIcon(HICON icon) {
  ICONINFO copies{};
  if (!GetIconInfo(icon, &copies)) return false;
  DeleteObject(copies.hbmColor);
  DeleteObject(copies.hbmMask);
  return true;
}

std::size_t CountWindows(HWND parent) {
  std::size_t count = 0;
  for (HWND window = nullptr; (window = FindWindowExW(parent, window, nullptr, nullptr));) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) ++count;
  }
  return count;
}

}  // namespace

std::size_t GdiObjectCount() {
  const GdiEntry* const table = GdiTable();
  return static_cast<std::size_t>(
      std::count_if(table, table + kGdiEntries, [](const GdiEntry& entry) { return entry.type != 0; }));
}

std::size_t UserObjectCount() {
  return CountWindows(nullptr) + CountWindows(HWND_MESSAGE) + CountHandles<HMENU>(IsMenu) +
         CountHandles<HICON>(IsIcon);
}
