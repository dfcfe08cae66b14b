/// @file Counting the handles of the running test.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <vector>

/// How many kernel handles this process has open, from the system's list of handles. GetProcessHandleCount
/// returns 0 under Wine, so that it would find no leak.
/// @throws std::runtime_error if the system does not list its handles.
inline std::size_t HandleCount() {
  struct Entry {
    void* object;
    ULONG_PTR process;
    ULONG_PTR handle;
    ULONG access;
    USHORT back_trace;
    USHORT type;
    ULONG attributes;
    ULONG reserved;
  };
  struct Table {
    ULONG_PTR count;
    ULONG_PTR reserved;
    Entry entries[1];
  };
  constexpr ULONG kExtendedHandleInformation = 64;  // SYSTEM_INFORMATION_CLASS does not name it
  constexpr auto kTooSmall = static_cast<NTSTATUS>(0xC0000004);

  using Query = NTSTATUS(WINAPI*)(ULONG, void*, ULONG, ULONG*);
  const auto query = reinterpret_cast<Query>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  std::vector<std::byte> buffer(1 << 20);
  for (;;) {
    const NTSTATUS status =
        query(kExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr);
    if (status >= 0) break;
    if (status != kTooSmall) throw std::runtime_error("the system does not list its handles");
    buffer.resize(buffer.size() * 2);
  }
  const auto* table = reinterpret_cast<const Table*>(buffer.data());
  return static_cast<std::size_t>(
      std::count_if(table->entries, table->entries + table->count,
                    [](const Entry& entry) { return entry.process == GetCurrentProcessId(); }));
}
