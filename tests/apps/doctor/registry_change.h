/// @file Faults that tests plant in the registry.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// Another value in an existing key, or none. The destructor puts back what was there.
class RegistryChange {
 public:
  /// @param data  a text, a number, or nothing to remove the value.
  RegistryChange(HKEY root, std::wstring path, std::wstring name,
                 const std::variant<std::monostate, std::wstring, std::uint32_t>& data);
  RegistryChange(const RegistryChange&) = delete;
  RegistryChange& operator=(const RegistryChange&) = delete;
  ~RegistryChange();

 private:
  HKEY m_root;
  std::wstring m_path, m_name;
  DWORD m_type = REG_NONE;
  std::optional<std::vector<BYTE>> m_before;
};

/// A new key with a default value, in one half of the registry. The destructor removes it, and the keys above
/// it that did not exist either.
class PlantedKey {
 public:
  /// @throws std::runtime_error if there is such a key, or it cannot be made.
  PlantedKey(HKEY root, const std::wstring& path, const std::variant<std::wstring, std::uint32_t>& data,
             REGSAM half = KEY_WOW64_64KEY);
  PlantedKey(const PlantedKey&) = delete;
  PlantedKey& operator=(const PlantedKey&) = delete;
  ~PlantedKey();

 private:
  HKEY m_root;
  REGSAM m_half;
  std::vector<std::wstring> m_made;  // the outermost first
};
