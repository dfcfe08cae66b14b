/// @file The registration scripts inside the DLL.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "registry_script/registry_script.h"

/// The registration script `id` of the DLL `module`, UTF-8 text in a resource of the type REGISTRY, for the
/// class `class_id`.
/// @param module  may be loaded as a data file.
/// @param path    of the DLL, as it stands in the registry.
/// @throws registry_script::Error if the script is malformed; _com_error if there is none.
std::vector<registry_script::Root> ReadRegistrationScript(HMODULE module, const std::wstring& path,
                                                          unsigned id, REFCLSID class_id);
