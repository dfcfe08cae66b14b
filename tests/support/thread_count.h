/// @file Counting the threads of the running program.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <tlhelp32.h>

#include "base/unique_handle.h"

/// How many threads this process has, whoever started them.
inline int ThreadCount() {
  const UniqueHandle threads = OwnHandle(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  int count = 0;
  for (BOOL more = Thread32First(threads.get(), &entry); more; more = Thread32Next(threads.get(), &entry)) {
    count += entry.th32OwnerProcessID == GetCurrentProcessId();
  }
  return count;
}
