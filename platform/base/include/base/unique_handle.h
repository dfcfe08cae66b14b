/// @file An owner for a kernel handle.
#pragma once

#include <windows.h>

#include <memory>

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

/// Closes the handle it holds.
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

/// Takes ownership of a handle that a system call returned. Null for both values that mean a failed call.
inline UniqueHandle OwnHandle(HANDLE handle) noexcept {
  return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}
