/// @file Where a program or DLL lies.
#pragma once

#include <windows.h>

#include <string>

/// The full path of a loaded module, of any length; of the program itself for null. The empty string, with
/// the reason as the last error, if the system does not know it.
std::wstring ModulePath(HMODULE module);

/// The module that holds this code, which every program and DLL has of its own; null if the system does not
/// know it.
HMODULE OwnModule() noexcept;
