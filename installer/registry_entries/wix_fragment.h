/// @file Registration scripts as a part of a package's source.
#pragma once

#include <string>
#include <vector>

#include "registry_script/registry_script.h"

namespace registry_entries {

/// The entries of `roots` as a WiX fragment in UTF-8: the component "Registration", and for the
/// one number in them, by which the host starts the add-in with itself or does not, the components
/// "LoadOnDemand" with the number as it is and "LoadAtStartup" with 1 in its place. The property
/// LOADEDATSTARTUP is what an installation that is there already has for that number.
///
/// HKCR is written as the computer's classes, never as the user's. A key marked ForceRemove goes with all its
/// contents when the package is removed; every other key goes when it is empty. Texts may have references in
/// brackets, such as [InstallFolder].
/// @throws std::runtime_error if there is not exactly one number, or a key has neither values nor subkeys and
/// is not
///         marked ForceRemove, because the package could not remove it.
std::string WixFragment(const std::vector<registry_script::Root>& roots);

}  // namespace registry_entries
