/// @file Custom properties in a file's user-defined property set.
#pragma once

#include "cad_host/model_file.h"
#include "compound_file.h"

namespace cad_host {

/// The document's custom properties; none where the file has no such property set. Reads what other
/// programs write too: any text, number, date or yes/no.
CustomProperties ReadProperties(const CompoundFile& file);

/// Writes the document's custom properties; a file without any gets no property set.
void WriteProperties(const CompoundFile& file, const CustomProperties& properties);

/// The text of a yes/no property.
inline constexpr const wchar_t* kYes = L"Yes";
inline constexpr const wchar_t* kNo = L"No";

/// Whether a property of this type can have this text; expressions fit everywhere.
bool FitsType(const std::wstring& text, swCustomInfoType_e type);

}  // namespace cad_host
