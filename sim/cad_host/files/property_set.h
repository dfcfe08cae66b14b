/// @file Custom properties in a file's user-defined property set.
#pragma once

#include "cad_host/custom_property.h"
#include "compound_file.h"

namespace cad_host {

/// The document's custom properties; empty if the file has no such property set. Can also read what other
/// programs write: any text, number, date or yes/no.
/// @throws HostError naming the file if the property set is cut off.
CustomProperties ReadProperties(const CompoundFile& file);

/// Writes the document's custom properties. They read back unchanged. A file without properties gets no
/// property set.
/// @throws HostError naming the file if it cannot be written.
void WriteProperties(const CompoundFile& file, const CustomProperties& properties);

/// Whether a property of this type can have this text; an expression fits every type.
bool FitsType(const std::wstring& text, swCustomInfoType_e type);

}  // namespace cad_host
