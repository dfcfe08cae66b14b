/// @file Reading the registry. Nothing here can change it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/unique_registry_key.h"

namespace doctor {

/// One of the two halves of the registry.
enum class View : REGSAM { k64Bit = KEY_WOW64_64KEY, k32Bit = KEY_WOW64_32KEY };

/// A key that is open for reading, or none.
class RegistryKey {
 public:
  RegistryKey(HKEY root, const std::wstring& path, View view = View::k64Bit);

  bool Exists() const { return m_key != nullptr; }

  /// The text of a value, with the values of its environment variables; `name` is empty for the default
  /// value. Nothing if the value is missing or not a text.
  std::optional<std::wstring> Text(const std::wstring& name) const;

  /// The number of a value; nothing if the value is missing or not a number of 32 bits.
  std::optional<std::uint32_t> Number(const std::wstring& name) const;

  /// The names of the subkeys.
  std::vector<std::wstring> Subkeys() const;

 private:
  UniqueRegistryKey m_key;
};

}  // namespace doctor
