/// @file Reading the user-defined section of a property set stream.
///
/// By itself, because Wine's property sets look at a stream's first section only and lose texts and names
/// in other code pages than the system's; other programs write both.
#pragma once

#include <string>
#include <string_view>

#include "cad_host/custom_property.h"

namespace cad_host {

/// Turns bytes of a code page, by its number, into text.
using CodePageDecoder = std::wstring (*)(std::string_view bytes, unsigned code_page);

/// The named properties of the section, in the order of their ids: any text, whole number, fraction, date or
/// yes/no. Values of other types read as the empty text.
/// @param stream a property set stream; an empty one has no properties.
/// @param decode called for texts and names in other code pages than UTF-16.
/// @throws std::out_of_range where the stream is not whole.
CustomProperties ReadUserDefinedSection(std::string_view stream, CodePageDecoder decode);

}  // namespace cad_host
