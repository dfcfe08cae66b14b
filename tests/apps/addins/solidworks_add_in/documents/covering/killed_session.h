/// @file A host process that is killed while it covers a component.
#pragma once

#include <string>

/// The program's first argument for CoverAndDie, and the exit code of a killed process.
inline constexpr const wchar_t* kCoverAndDie = L"--cover-and-die";
inline constexpr unsigned kKilled = 99;

/// Opens the assembly, selects its first component, and covers it with the download; the process is killed at
/// the given step. The steps, counted from 1, are the moments before each call of the host and before each
/// system call for a file, starting with the host call that returns the component's path.
/// @return 0 if the command succeeded before it reached the step, 1 if it failed before; does not return
/// otherwise.
int CoverAndDie(const std::wstring& assembly, const std::wstring& download, int step);
