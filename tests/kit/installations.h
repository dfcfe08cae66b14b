/// @file What in the registry belongs to the real host and to an installed add-in.
#pragma once

#include <string>
#include <vector>

/// The keys of the registry that exist and that the tests would change: the host's, the add-in's classes and
/// its type library.
std::vector<std::wstring> FoundInstallations();

/// Removes what tests have left of these keys. Only for whoever found none of them before the tests.
void RemoveLeftovers();
