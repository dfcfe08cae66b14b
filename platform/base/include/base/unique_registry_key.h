/// @file An owner for an open key of the registry.
#pragma once

#include <windows.h>

#include <memory>

struct RegistryKeyCloser {
  using pointer = HKEY;
  void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};

/// Closes the key it holds.
using UniqueRegistryKey = std::unique_ptr<HKEY, RegistryKeyCloser>;
