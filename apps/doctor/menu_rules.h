/// @file What the add-in's library says that a menu may name.
#pragma once

#include <optional>

#include "add_in_library.h"
#include "configuration/view_faults.h"

namespace doctor {

/// The commands and enable methods of the type library in the DLL, and the icons in its toolbar.
/// @return nothing if the DLL has none of them, because it is missing or another one.
std::optional<ViewRules> ReadViewRules(const AddInLibrary& library);

}  // namespace doctor
