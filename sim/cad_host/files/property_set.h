/// @file Custom properties in a file's user-defined property set.
#pragma once

#include "cad_host/custom_property.h"
#include "compound_file.h"

namespace cad_host {

/// A stream beside the property set, for the properties that do not read back from the set as they were
/// typed: a number value loses the form "1.50", and a text value loses the type. Each record has the name,
/// the type and the text in the set, then the type and the text as typed.
inline constexpr const wchar_t* kAsTypedStream = L"PropertiesAsTyped";

/// The document's custom properties; empty if the file has no such property set. Can also read what other
/// programs write: any text, number, date or yes/no, in any code page and in several sections.
/// @throws HostError naming the file if the property set is cut off or in an unknown code page.
CustomProperties ReadProperties(const CompoundFile& file);

/// Like ReadProperties for a file of this host: each property as it was typed.
CustomProperties ReadPropertiesAsTyped(const CompoundFile& file);

/// Writes the document's custom properties. Everything else in the property set keeps its bytes. A file
/// without properties gets no property set.
/// @throws HostError naming the file if it cannot be written, is cut off, or is in a code page that is
/// unknown or
///         cannot spell the name of a new property.
void WriteProperties(const CompoundFile& file, const CustomProperties& properties);

/// Like WriteProperties; ReadPropertiesAsTyped reads the properties back unchanged.
void WritePropertiesAsTyped(const CompoundFile& file, const CustomProperties& properties);

/// Whether a property of this type can have this text; an expression fits every type.
bool FitsType(const std::wstring& text, swCustomInfoType_e type);

}  // namespace cad_host
