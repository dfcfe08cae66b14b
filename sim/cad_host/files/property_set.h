/// @file Custom properties in a file's user-defined property set.
#pragma once

#include "cad_host/custom_property.h"
#include "compound_file.h"

namespace cad_host {

/// The document's custom properties; none where the file has no such property set. Reads what other
/// programs write too: any text, number, date or yes/no.
/// @throws HostError naming the file where the property set is not whole.
CustomProperties ReadProperties(const CompoundFile& file);

/// Writes the document's custom properties, which read back as they are; a file without any gets no
/// property set.
/// @throws HostError naming the file where it cannot be written.
void WriteProperties(const CompoundFile& file, const CustomProperties& properties);

/// Whether a property of this type can have this text; expressions fit everywhere.
bool FitsType(const std::wstring& text, swCustomInfoType_e type);

}  // namespace cad_host
