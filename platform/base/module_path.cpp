#include "base/module_path.h"

std::wstring ModulePath(HMODULE module) {
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  while (length == path.size()) {  // did not fit
    path.resize(path.size() * 2);
    length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  }
  path.resize(length);
  return path;
}

HMODULE OwnModule() noexcept {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&OwnModule), &module);
  return module;
}
