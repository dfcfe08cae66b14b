/// @file Registration by scripts.
#pragma once

#include <windows.h>

#include "com_module.h"

namespace registrar {

/// Writes all entries of the class's registration script. Keys marked ForceRemove are deleted first, so
/// that nothing of an older registration stays.
/// @return S_OK; the first failure of the registry, at which it stops; E_FAIL with a line in the log that
///         names the script, line and token where the script is malformed.
HRESULT Register(const CreatableClass& registered) noexcept;

/// Removes the entries of the class's registration script: its values everywhere, keys marked ForceRemove
/// with all their contents, keys marked NoRemove never, any other key unless others have put keys under
/// it. What is not there is passed over.
/// @return S_OK; the first failure, which does not stop the rest; E_FAIL as above.
HRESULT Unregister(const CreatableClass& registered) noexcept;

}  // namespace registrar
