#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

#include "files/property_set_editor.h"
#include "files/property_set_reader.h"
#include "promise.h"
#include "property_set_stream.h"
#include "property_set_writer.h"
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

void TryAnyStream(std::string_view bytes) {
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

bool IsSame(const CustomProperty& a, const CustomProperty& b) {
  return a.name == b.name && a.text == b.text && a.type == b.type;
}

/// Removes some properties, changes some and adds some.
CustomProperties Chosen(const CustomProperties& properties, Choices& choices) {
  static const CustomProperty contents[] = {{{}, L"changed", swCustomInfoText},
                                            {{}, L"1.5", swCustomInfoNumber},
                                            {{}, L"-7", swCustomInfoNumber},
                                            {{}, L"Yes", swCustomInfoYesOrNo},
                                            {{}, L"2024-02-29", swCustomInfoDate}};
  CustomProperties chosen;
  const auto put = [&](const std::wstring& name) {
    chosen.push_back(choices.Of(contents));
    chosen.back().name = name;
  };
  for (const CustomProperty& property : properties) {
    const std::size_t what = choices.Below(3);
    if (what == 1) chosen.push_back(property);
    if (what == 2) put(property.name);
  }
  while (choices.Flag()) put(L"added" + std::to_wstring(chosen.size()));
  return chosen;
}

/// The links of the properties that are left stay, and those of others go.
void RequireLinks(const WrittenPropertySet& set, const std::string& edited, const CustomProperties& wanted) {
  const std::map<std::uint32_t, std::string> before = ValuesOf(set.stream);
  const std::map<std::uint32_t, std::string> after = ValuesOf(edited);
  for (const auto& [id, name] : set.links) {
    const bool stays = std::ranges::find(wanted, name, &CustomProperty::name) != wanted.end();
    const auto found = after.find(id);
    Require((found != after.end()) == stays, "a link goes with its property");
    if (stays) Require(found->second == before.at(id), "a link is not changed");
  }
}

void TryWrittenStream(std::string_view bytes) {
  const std::string_view half = bytes.substr(bytes.size() / 2);
  const WrittenPropertySet set = WritePropertySet(Choices(bytes.substr(0, bytes.size() / 2)));
  Require(std::ranges::equal(Read(set.stream), set.properties, IsSame), "what is read is what was written");
  TryAnyStream(set.stream);
  Choices choices(half);
  const CustomProperties wanted = Chosen(set.properties, choices);
  const std::optional<std::string> edited = TryEdit(set.stream, wanted);
  Require(edited.has_value(), "a whole stream can be edited");
  const CustomProperties read = Read(*edited);
  Require(
      read.size() == wanted.size() &&
          std::ranges::all_of(wanted, [&](const CustomProperty& property) { return Has(read, property); }),
      "an edited stream has what is wanted, and nothing else");
  RequireLinks(set, *edited, wanted);
}

}  // namespace

void TryPropertySet(std::string_view bytes) {
  TryAnyStream(bytes);
  TryWrittenStream(bytes);
}

}  // namespace fuzz
