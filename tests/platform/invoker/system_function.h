/// @file The system's own function where the program's import of it is replaced.
#pragma once

#include <windows.h>

/// `name` of the loaded system library `library`, whatever the import table of this program says: there a
/// plain `&Function` may lead to the replacement.
template <class Function>
Function* SystemFunction(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}
