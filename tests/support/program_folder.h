/// @file Where a test program finds what it needs: always from its own folder, so that the folders can be
/// moved.
#pragma once

#include <string>
#include <string_view>

/// The folder of the running program, without a separator at its end.
std::wstring ProgramFolder();

/// The full path of a file that lies with the test programs. `name` is relative to their folder; `data\` has
/// the files that tavo_test_data() copies.
std::wstring BesideTests(std::wstring_view name);

/// The full path of a file of the sources. Only for tests that the test kit leaves out: it has no sources.
std::wstring SourceFile(std::wstring_view name);

/// The full path of a file of the build folder, or of the test kit's.
std::wstring InBuild(std::wstring_view name);

/// The full path of a file of the add-in or the simulators, which lie in the folder `bin` beside that of the
/// test programs.
std::wstring InBin(std::wstring_view name);
