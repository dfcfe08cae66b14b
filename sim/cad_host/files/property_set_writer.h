/// @file Writes the user-defined section as a property set stream.
///
/// Wine's own property sets are not used for this: they cannot write fractions and yes/no values, and they
/// search all names for each property.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cad_host/custom_property.h"

namespace cad_host {

/// A stream with one section that has the properties in their order. A number, a date or a yes/no is stored
/// as a value of that type if its text can be converted, otherwise (such as an expression) as text.
std::string UserDefinedSection(const CustomProperties& properties);

/// The type and the value of a property as UserDefinedSection stores them, padded to whole units of 4 bytes.
std::string PropertyValueBytes(const CustomProperty& property);

/// The type `type` and the number that `text` is, padded to whole units of 4 bytes; empty if it is not a type
/// of numbers that this host reads, or cannot hold the number.
std::optional<std::string> NumberValueBytes(const std::wstring& text, std::uint32_t type);

}  // namespace cad_host
