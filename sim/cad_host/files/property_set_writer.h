/// @file Writing the user-defined section as a property set stream.
///
/// By itself, because Wine's property sets refuse fractions and yes/no when they are written, and look
/// through all their names for each property.
#pragma once

#include <string>

#include "cad_host/custom_property.h"

namespace cad_host {

/// A stream whose one section has the properties, in their order. A number, a date or a yes/no is stored as
/// the value that its text names; what names none, such as an expression, as text.
std::string UserDefinedSection(const CustomProperties& properties);

}  // namespace cad_host
