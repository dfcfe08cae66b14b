#include <windows.h>

#include "configuration/client_configuration.h"

namespace {

/// `text` with the values of its environment variables.
std::wstring ExpandVariables(const std::wstring& text) {
  const DWORD size = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
  std::wstring expanded(size, L'\0');
  const DWORD used = ExpandEnvironmentStringsW(text.c_str(), expanded.data(), size);
  if (used == 0 || used > size) return text;
  expanded.resize(used - 1);  // without the null character
  return expanded;
}

}  // namespace

ClientFile ReadClientFile(const std::wstring& path) {
  CJsonObject file;
  file.CreateFromFile(path);
  ClientFile read = ReadClientMembers(file);
  read.configuration.program = ExpandVariables(read.configuration.program);
  return read;
}
