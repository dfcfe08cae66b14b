#include "property_set_reader.h"

#include <set>

#include "property_set_format.h"
#include "property_set_section.h"

namespace cad_host {

using namespace property_set;

CustomProperties ReadUserDefinedSections(std::string_view stream, CodePageDecoder decode) {
  CustomProperties properties;
  std::set<std::wstring> names;
  for (const SectionBytes& section : SectionsOf(stream)) {
    if (section.id != kUserDefined) continue;
    for (CustomProperty& property : Section(section.bytes, decode).Read()) {
      if (names.insert(property.name).second) properties.push_back(std::move(property));
    }
  }
  return properties;
}

}  // namespace cad_host
