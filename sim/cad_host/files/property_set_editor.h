/// @file Changes properties in a property set stream that any program wrote.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "cad_host/custom_property.h"
#include "property_set_reader.h"

namespace cad_host {

/// Turns text into bytes of a code page, by its number; empty if the code page cannot spell the text.
using CodePageEncoder = std::optional<std::string> (*)(std::wstring_view text, unsigned code_page);

/// The code page of the stream cannot spell the name of a new property.
class UnspellableName : public std::runtime_error {
 public:
  UnspellableName(std::wstring property_name, unsigned number)
      : std::runtime_error("the name of a property"), name(std::move(property_name)), code_page(number) {}

  std::wstring name;
  unsigned code_page;
};

/// The stream with `properties` in its user-defined sections. Everything else keeps its bytes: other
/// sections, values that did not change, and values of types that are not read. A changed text stays in the
/// code page of its section if that can spell it, otherwise it becomes wide. New properties go into the first
/// user-defined section; if there is no such section, one is added.
/// @param stream not empty. It is returned unchanged if it has these properties already.
/// @throws std::out_of_range if the stream is cut off; UnspellableName.
std::string EditUserDefinedSections(std::string_view stream, const CustomProperties& properties,
                                    CodePageDecoder decode, CodePageEncoder encode);

}  // namespace cad_host
