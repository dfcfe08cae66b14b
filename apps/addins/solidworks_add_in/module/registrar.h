/// @file Registration by scripts.
#pragma once

#include <windows.h>

#include "com_module.h"

namespace registrar {

/// Writes all entries of the class's registration script. Keys marked ForceRemove are deleted first, so
/// that nothing of an older registration remains.
/// @return S_OK; the first failure of the registry, at which it stops; E_FAIL if the script is malformed,
///         after a line in the log that names the script, line and token.
HRESULT Register(const CreatableClass& registered) noexcept;

/// Removes the entries of the class's registration script: all its values, keys marked ForceRemove with all
/// their contents, and other keys if they have no subkeys left. Keys marked NoRemove stay. Missing entries
/// are ignored.
/// @return S_OK; the first failure, which does not stop the rest; E_FAIL as for Register.
HRESULT Unregister(const CreatableClass& registered) noexcept;

}  // namespace registrar
