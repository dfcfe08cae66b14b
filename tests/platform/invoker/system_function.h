/// @file A system function, even if the program's import of it is replaced.
#pragma once

#include <windows.h>

/// The function `name` of the loaded system library `library`. Use it if the import table is patched, because
/// `&Function` may then be the replacement.
template <class Function>
Function* SystemFunction(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}
