#include "property_set_editor.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "property_set_bytes.h"
#include "property_set_section.h"
#include "property_set_section_editor.h"
#include "property_set_writer.h"
#include "wanted_properties.h"

namespace cad_host {
namespace {

using namespace property_set;

struct NewSection {
  SectionId id;
  std::string bytes;
};

/// The stream with other sections; `head` is its header without the places of the sections.
std::string StreamOf(std::string_view head, const std::vector<NewSection>& sections) {
  std::string places;
  std::string all;
  const std::size_t begin = head.size() + sections.size() * kSectionPlaceSize;
  for (const NewSection& section : sections) {
    places.append(section.id.begin(), section.id.end());
    Append(places, static_cast<std::uint32_t>(begin + all.size()));
    all += section.bytes;
    Pad(all);
  }
  std::string stream(head.substr(0, kSectionCount));
  Append(stream, static_cast<std::uint32_t>(sections.size()));
  return stream + places + all;
}

}  // namespace

std::string EditUserDefinedSections(std::string_view stream, const CustomProperties& properties,
                                    CodePageDecoder decode, CodePageEncoder encode) {
  WantedProperties wanted(properties);
  const std::vector<SectionBytes> sections = SectionsOf(stream);
  std::vector<std::optional<SectionEditor>> edits(sections.size());
  SectionEditor* first = nullptr;
  for (std::size_t index = 0; index < sections.size(); ++index) {
    if (sections[index].id != kUserDefined) continue;
    edits[index].emplace(sections[index].bytes, decode, encode);
    edits[index]->Change(wanted);
    if (!first) first = &*edits[index];
  }
  const std::vector<const CustomProperty*> added = wanted.Left();
  if (first) {
    for (const CustomProperty* const property : added) first->Add(*property);
  }

  std::vector<NewSection> edited;
  bool changed = false;
  for (std::size_t index = 0; index < sections.size(); ++index) {
    edited.push_back(
        {sections[index].id, edits[index] ? edits[index]->Result() : std::string(sections[index].bytes)});
    changed = changed || edited.back().bytes != sections[index].bytes;
  }
  if (!first && !added.empty()) {
    CustomProperties own;
    for (const CustomProperty* const property : added) own.push_back(*property);
    const std::string own_stream = UserDefinedSection(own);
    edited.push_back({kUserDefined, std::string(SectionsOf(own_stream)[0].bytes)});
    changed = true;
  }
  return changed ? StreamOf(stream.substr(0, kSectionPlaces), edited) : std::string(stream);
}

}  // namespace cad_host
