#include "property_set_editor.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

#include "property_set_section.h"
#include "property_set_writer.h"

namespace cad_host {
namespace {

using namespace property_set;

constexpr std::size_t kAlignment = 4;

void AppendNumber(std::string& bytes, std::size_t value) {
  const auto number = static_cast<std::uint32_t>(value);
  bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void Pad(std::string& bytes) { bytes.resize((bytes.size() + kAlignment - 1) / kAlignment * kAlignment); }

/// The properties that the stream shall have, each until a section has taken it.
class Wanted {
 public:
  explicit Wanted(const CustomProperties& properties) : m_properties(properties) {
    for (const CustomProperty& property : properties) m_byName.emplace(property.name, &property);
  }

  /// The property `name`, which belongs to the caller from now on; null if it shall not exist. The second
  /// property of a name gets the same one: it stays hidden behind the first.
  const CustomProperty* Take(const std::wstring& name) {
    const auto found = m_byName.find(name);
    if (found == m_byName.end()) return nullptr;
    m_taken.insert(found->second);
    return found->second;
  }

  bool WasTaken(const std::wstring& name) const {
    const auto found = m_byName.find(name);
    return found != m_byName.end() && m_taken.contains(found->second);
  }

  /// The properties that nothing has taken, in their order.
  std::vector<const CustomProperty*> Left() const {
    std::vector<const CustomProperty*> left;
    for (const CustomProperty& property : m_properties) {
      const auto found = m_byName.find(property.name);
      if (found->second == &property && !m_taken.contains(&property)) left.push_back(&property);
    }
    return left;
  }

 private:
  const CustomProperties& m_properties;
  std::unordered_map<std::wstring, const CustomProperty*> m_byName;
  std::set<const CustomProperty*> m_taken;
};

/// Whether both would be stored as the same value. "1.50" and "1.5" are the same number.
bool SameStoredValue(const CustomProperty& a, const CustomProperty& b) {
  if (a.type == b.type && a.text == b.text) return true;
  return PropertyValueBytes(a) == PropertyValueBytes(b);
}

/// One user-defined section of the stream, with its changes.
class SectionEdit {
 public:
  SectionEdit(std::string_view bytes, CodePageDecoder decode, CodePageEncoder encode)
      : m_bytes(bytes), m_section(bytes, decode), m_encode(encode) {}

  /// Takes the values of the properties that the section has.
  void Change(Wanted& wanted) {
    for (const Section::Place& place : m_section.Places()) {
      const auto name = m_section.Names().find(place.id);
      if (place.id < kFirstId || name == m_section.Names().end()) continue;
      const bool hidden = wanted.WasTaken(name->second);
      const CustomProperty* const property = wanted.Take(name->second);
      if (!property) {
        m_removed.insert(place.id);
      } else if (!hidden && !SameStoredValue(*property, m_section.Property(place.id))) {
        m_values[place.id] = ValueBytes(*property, m_section.TypeOf(place.id));
      }
    }
  }

  void Add(const CustomProperty& property) {
    if (m_added.empty()) m_nextId = UnusedId();
    m_added.push_back({m_nextId++, property.name, PropertyValueBytes(property)});
  }

  /// The bytes of the section with its changes.
  std::string Result() const {
    if (m_values.empty() && m_removed.empty() && m_added.empty()) return std::string(m_bytes);
    std::vector<std::pair<std::uint32_t, std::string>> values;
    bool has_dictionary = false;
    for (const Section::Place& place : m_section.Places()) {
      if (m_removed.contains(place.id)) continue;
      has_dictionary = has_dictionary || place.id == kDictionaryId;
      values.emplace_back(place.id, CurrentBytes(place));
    }
    if (!has_dictionary) values.emplace_back(kDictionaryId, Dictionary());
    for (const Added& added : m_added) values.emplace_back(added.id, added.value);
    return Assemble(values);
  }

 private:
  struct Added {
    std::uint32_t id;
    std::wstring name;
    std::string value;
  };

  /// The first id after all that names and values have.
  std::uint32_t UnusedId() const {
    std::uint32_t id = kFirstId;
    for (const auto& [used, name] : m_section.Names()) id = std::max(id, used + 1);
    for (const Section::Place& place : m_section.Places()) {
      if (place.id < kFirstReservedId) id = std::max(id, place.id + 1);
    }
    return id;
  }

  /// A text in the type that it had if the code page can spell it; anything else as this host stores it.
  std::string ValueBytes(const CustomProperty& property, std::uint32_t old_type) const {
    const unsigned page = m_section.CodePage();
    if (old_type != kTypeText || property.type != swCustomInfoText || page == kUtf16) {
      return PropertyValueBytes(property);
    }
    const auto text = m_encode(property.text, page);
    if (!text) return PropertyValueBytes(property);
    std::string bytes;
    AppendNumber(bytes, kTypeText);
    AppendNumber(bytes, text->size() + 1);
    bytes.append(text->c_str(), text->size() + 1);
    Pad(bytes);
    return bytes;
  }

  std::string CurrentBytes(const Section::Place& place) const {
    const auto changed = m_values.find(place.id);
    if (changed != m_values.end()) return changed->second;
    const bool names_changed = !m_removed.empty() || !m_added.empty();
    if (place.id == kDictionaryId && names_changed) return Dictionary();
    return std::string(m_section.RawValue(place));
  }

  std::string Dictionary() const {
    std::string names;
    std::size_t count = 0;
    const auto add = [&](std::uint32_t id, const std::wstring& name) {
      AppendNumber(names, id);
      AppendName(names, name);
      ++count;
    };
    for (const auto& [id, name] : m_section.Names()) {
      if (!m_removed.contains(id)) add(id, name);
    }
    for (const Added& added : m_added) add(added.id, added.name);
    std::string bytes;
    AppendNumber(bytes, count);
    bytes += names;
    Pad(bytes);
    return bytes;
  }

  /// The length and the name, both with the terminating null. Only wide names are padded.
  void AppendName(std::string& bytes, const std::wstring& name) const {
    const unsigned page = m_section.CodePage();
    if (page == kUtf16) {
      AppendNumber(bytes, name.size() + 1);
      for (const wchar_t character : name + L'\0') {
        const auto unit = static_cast<char16_t>(character);
        bytes.append(reinterpret_cast<const char*>(&unit), sizeof unit);
      }
      Pad(bytes);
      return;
    }
    const auto text = m_encode(name, page);
    if (!text) throw UnspellableName(name, page);
    AppendNumber(bytes, text->size() + 1);
    bytes.append(text->c_str(), text->size() + 1);
  }

  static std::string Assemble(const std::vector<std::pair<std::uint32_t, std::string>>& values) {
    const std::size_t head = kPropertyPlaces + values.size() * kPropertyPlaceSize;
    std::string places;
    std::string all;
    for (const auto& [id, bytes] : values) {
      AppendNumber(places, id);
      AppendNumber(places, head + all.size());
      all += bytes;
      Pad(all);
    }
    std::string section;
    AppendNumber(section, head + all.size());
    AppendNumber(section, values.size());
    return section + places + all;
  }

  std::string_view m_bytes;
  Section m_section;
  CodePageEncoder m_encode;
  std::map<std::uint32_t, std::string> m_values;  // the changed ones, by id
  std::set<std::uint32_t> m_removed;
  std::vector<Added> m_added;
  std::uint32_t m_nextId = kFirstId;
};

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
    AppendNumber(places, begin + all.size());
    all += section.bytes;
    Pad(all);
  }
  std::string stream(head.substr(0, kSectionCount));
  AppendNumber(stream, sections.size());
  return stream + places + all;
}

}  // namespace

std::string EditUserDefinedSections(std::string_view stream, const CustomProperties& properties,
                                    CodePageDecoder decode, CodePageEncoder encode) {
  Wanted wanted(properties);
  const std::vector<SectionBytes> sections = SectionsOf(stream);
  std::vector<std::optional<SectionEdit>> edits(sections.size());
  SectionEdit* first = nullptr;
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
