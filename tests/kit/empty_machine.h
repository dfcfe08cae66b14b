/// @file A registry of the test's own.
#pragma once

#include <windows.h>

#include "base/unique_registry_key.h"

/// For the life of the object, HKEY_LOCAL_MACHINE is an empty key for this process.
class EmptyMachine {
 public:
  EmptyMachine() {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, kPath, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key,
                    nullptr);
    m_key.reset(key);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, key);
  }
  EmptyMachine(const EmptyMachine&) = delete;
  EmptyMachine& operator=(const EmptyMachine&) = delete;
  ~EmptyMachine() {
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    m_key.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
  }

 private:
  static constexpr const wchar_t* kPath = L"Software\\TAVO test kit test";

  UniqueRegistryKey m_key;
};
