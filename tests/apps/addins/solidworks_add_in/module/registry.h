/// @file Reading the registry, and adding entries of other programs to it.
#pragma once

#include <windows.h>

#include <map>
#include <string>

/// All values under a key and its subkeys: "Subkey\Name" ("Subkey\" for the default value) and the data as
/// text, "dword:1" for a number. A key without values has the entry "Subkey\" with "(no value)". The subkey
/// is empty for the key itself.
using RegistryContents = std::map<std::wstring, std::wstring>;

/// The values under `path`; empty if the key does not exist.
RegistryContents ReadRegistry(HKEY root, const std::wstring& path);

bool RegistryKeyExists(HKEY root, const std::wstring& path);

/// A new key with a value of another program. The destructor removes it with all its subkeys.
class ForeignKey {
 public:
  /// @throws std::runtime_error if the key exists already or cannot be created.
  ForeignKey(HKEY root, std::wstring path);
  ForeignKey(const ForeignKey&) = delete;
  ForeignKey& operator=(const ForeignKey&) = delete;
  ~ForeignKey();

 private:
  HKEY m_root;
  std::wstring m_path;
};
