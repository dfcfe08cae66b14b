/// @file Changes properties in a property set stream that any program wrote.
#pragma once

#include <string>
#include <string_view>

#include "cad_host/custom_property.h"
#include "code_pages.h"

namespace cad_host {

/// The stream with `properties` in its user-defined sections. Everything else keeps its bytes: other
/// sections, values that did not change, values of types that are not read, and names.
///
/// A changed text stays in the code page of its section if that can spell it, otherwise it becomes wide. A
/// changed number keeps its type if that can hold it; otherwise, as every other changed value, it is stored
/// as PropertyValueBytes says. So a whole number that does not fit its type and 32 bits becomes a fraction,
/// which has 15 digits for certain, and a changed date is the start of its day: the time of day is lost.
///
/// New properties go into the first user-defined section; if there is no such section, one is added. With a
/// removed property goes its linked value.
/// @param stream not empty. It is returned unchanged if it has these properties already.
/// @throws std::out_of_range if the stream is cut off; UnknownCodePage; UnspellableName.
std::string EditUserDefinedSections(std::string_view stream, const CustomProperties& properties,
                                    CodePageDecoder decode, CodePageEncoder encode);

}  // namespace cad_host
