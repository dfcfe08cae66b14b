/// @file Starting a program of this build.
#pragma once

#include <windows.h>

#include <string>

#include "base/unique_handle.h"

struct StartedProgram {
  UniqueHandle process;
  DWORD id = 0;
};

/// Starts the program at the full path `program`. @throws std::runtime_error with the path if it cannot be
/// started.
StartedProgram StartProgram(const std::wstring& program, const std::wstring& arguments);
