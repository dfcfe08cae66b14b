/// @file Reads the user-defined sections of a property set stream.
///
/// Wine's own property sets are not used for this: they read only the first section of a stream and lose
/// texts and names in other code pages than the system's. Other programs write both.
#pragma once

#include <string_view>

#include "cad_host/custom_property.h"
#include "code_pages.h"

namespace cad_host {

/// The named properties of all user-defined sections, section by section, in the order of their ids: any
/// text, number, date or yes/no. Values of other types read as the empty text. A name that an earlier section
/// has is left out.
/// @param stream a property set stream; an empty one has no properties.
/// @param decode called for texts and names in other code pages than UTF-16.
/// @throws std::out_of_range if the stream is cut off; UnknownCodePage.
CustomProperties ReadUserDefinedSections(std::string_view stream, CodePageDecoder decode);

}  // namespace cad_host
