/// @file The path of a program or DLL.
#pragma once

#include <windows.h>

#include <string>

/// The full path of a loaded module, of any length; null means the program itself.
/// @return the empty string, with the reason as the last error, if the system does not know the module.
std::wstring ModulePath(HMODULE module);

/// The program or DLL that this code is linked into; null if the system does not know it.
HMODULE OwnModule() noexcept;
