/// @file A session of the host that ends in the middle of covering a component.
#pragma once

#include <string>

/// The program's first argument for CoverAndDie, and the exit code of a session that was killed.
inline constexpr const wchar_t* kCoverAndDie = L"--cover-and-die";
inline constexpr unsigned kKilled = 99;

/// Opens the assembly, selects its first component, and covers it with the download; the process is killed
/// at the given step. Steps, counted from 1, are the moments before each call of the host and each call that
/// asks for or changes files, from the one on that gives the component's path.
/// @return 0 where the command ended well before it came to the step; does not return otherwise.
int CoverAndDie(const std::wstring& assembly, const std::wstring& download, int step);
