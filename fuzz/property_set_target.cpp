#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

#include "files/property_set_editor.h"
#include "files/property_set_reader.h"
#include "promise.h"
#include "property_set_stream.h"
#include "targets.h"

namespace fuzz {
namespace {

using cad_host::CustomProperties;
using cad_host::CustomProperty;

CustomProperties Read(std::string_view stream) {
  return cad_host::ReadUserDefinedSections(stream, DecodeLatin1);
}

std::string Edit(std::string_view stream, const CustomProperties& properties) {
  return cad_host::EditUserDefinedSections(stream, properties, DecodeLatin1, EncodeLatin1);
}

/// The stream with other properties; nothing if its code page cannot spell a name, or if a value without a
/// name, which reading passes over, is cut off.
std::optional<std::string> TryEdit(std::string_view stream, const CustomProperties& properties) {
  try {
    return Edit(stream, properties);
  } catch (const cad_host::UnspellableName&) {
    return std::nullopt;
  } catch (const std::out_of_range&) {
    return std::nullopt;
  }
}

bool Has(const CustomProperties& properties, const CustomProperty& wanted) {
  return std::ranges::any_of(properties, [&](const CustomProperty& property) {
    return property.name == wanted.name && property.text == wanted.text && property.type == wanted.type;
  });
}

/// The properties with the first changed, the last removed and one more.
CustomProperties Changed(CustomProperties properties) {
  if (properties.size() > 1) properties.pop_back();
  CustomProperty added{.name = L"added", .text = L"new"};
  while (std::ranges::find(properties, added.name, &CustomProperty::name) != properties.end()) {
    added.name += L'+';
  }
  properties.push_back(added);
  properties.front().text = L"changed";
  properties.front().type = swCustomInfoText;
  return properties;
}

}  // namespace

void TryPropertySet(std::string_view bytes) {
  CustomProperties properties;
  try {
    properties = Read(bytes);
  } catch (const std::out_of_range&) {
    return;
  }
  if (bytes.empty()) return;
  Require(Edit(bytes, properties) == bytes, "a stream that has the properties is unchanged");

  const CustomProperties wanted = Changed(properties);
  const std::optional<std::string> edited = TryEdit(bytes, wanted);
  if (!edited) return;
  const CustomProperties read = Read(*edited);
  Require(read.size() == wanted.size(), "a changed stream has as many properties as wanted");
  for (const CustomProperty& property : wanted)
    Require(Has(read, property), "a changed stream has what is wanted");
}

}  // namespace fuzz
