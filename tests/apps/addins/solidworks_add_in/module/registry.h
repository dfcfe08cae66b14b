/// @file Looking at the registry, and putting strangers' entries into it.
#pragma once

#include <windows.h>

#include <map>
#include <string>

/// All values under a key and its subkeys: "Subkey\Name" (the default value is "Subkey\") to the data as
/// text, "dword:1" for a number. A key without values has the entry "Subkey\" with "(no value)". The
/// key's own path is the empty one.
using RegistryContents = std::map<std::wstring, std::wstring>;

/// What is under `path`; empty where there is no such key.
RegistryContents ReadRegistry(HKEY root, const std::wstring& path);

bool RegistryKeyExists(HKEY root, const std::wstring& path);

/// A key with a value that belongs to someone else; removed at the end, with all that is under it.
class ForeignKey {
 public:
  /// @param options such as REG_OPTION_VOLATILE.
  ForeignKey(HKEY root, std::wstring path, DWORD options = REG_OPTION_NON_VOLATILE);
  ForeignKey(const ForeignKey&) = delete;
  ForeignKey& operator=(const ForeignKey&) = delete;
  ~ForeignKey();

 private:
  HKEY m_root;
  std::wstring m_path;
};
