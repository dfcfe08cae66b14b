#include "property_set_section_editor.h"

#include "property_set_bytes.h"
#include "property_set_format.h"
#include "property_set_writer.h"

namespace cad_host::property_set {
namespace {

void AppendNumber(std::string& bytes, std::size_t value) { Append(bytes, static_cast<std::uint32_t>(value)); }

/// The length and the text, both with the terminating null.
void AppendText(std::string& bytes, const std::string& text) {
  AppendNumber(bytes, text.size() + 1);
  bytes.append(text.c_str(), text.size() + 1);
}

/// A section with the values by their ids.
std::string Assemble(const std::vector<std::pair<std::uint32_t, std::string>>& values) {
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

}  // namespace

SectionEditor::SectionEditor(std::string_view bytes, CodePageDecoder decode, CodePageEncoder encode)
    : m_bytes(bytes), m_section(bytes, decode), m_encode(encode) {
  const auto use = [&](std::uint32_t id) {
    if (id < kLinkBit) m_usedIds.insert(id);
  };
  for (const auto& [id, name] : m_section.Names()) use(id);
  for (const Section::Place& place : m_section.Places()) use(place.id);
}

void SectionEditor::Change(WantedProperties& wanted) {
  const auto& names = m_section.Names();
  // In the order of the ids, as for reading: it decides which of two properties of a name hides the other.
  for (const auto& [id, name] : names) {
    if (id < kFirstId || !m_section.Has(id)) continue;
    const bool hidden = wanted.WasTaken(name);
    const CustomProperty* const property = wanted.Take(name);
    if (!property) {
      m_removed.insert(id);
      if (!names.contains(id | kLinkBit)) m_removed.insert(id | kLinkBit);
    } else if (!hidden && !SameStoredValue(*property, id)) {
      m_values[id] = ValueBytes(*property, m_section.TypeOf(id));
    }
  }
}

void SectionEditor::Add(const CustomProperty& property) {
  const std::uint32_t id = UnusedId();
  m_usedIds.insert(id);
  m_added.push_back({id, property.name, PropertyValueBytes(property)});
}

std::string SectionEditor::Result() const {
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

/// The id after the used ones, or the first unused one if the last is used.
std::uint32_t SectionEditor::UnusedId() const {
  const std::uint32_t next = *m_usedIds.rbegin() + 1;
  if (next < kLinkBit) return next;
  std::uint32_t id = kFirstId;
  while (m_usedIds.contains(id)) ++id;
  return id;
}

std::string SectionEditor::ValueBytes(const CustomProperty& property, std::uint32_t old_type) const {
  if (property.type == swCustomInfoNumber) {
    if (const auto number = NumberValueBytes(property.text, old_type)) return *number;
  }
  const unsigned page = m_section.CodePage();
  if (old_type != kTypeText || property.type != swCustomInfoText || page == kUtf16) {
    return PropertyValueBytes(property);
  }
  const auto text = m_encode(property.text, page);
  if (!text) return PropertyValueBytes(property);
  std::string bytes;
  AppendNumber(bytes, kTypeText);
  AppendText(bytes, *text);
  Pad(bytes);
  return bytes;
}

/// Whether the property with the id would be stored as the value that it has. "1.50" and "1.5" are the same
/// number.
bool SectionEditor::SameStoredValue(const CustomProperty& wanted, std::uint32_t id) const {
  const CustomProperty stored = m_section.Property(id);
  if (wanted.type == stored.type && wanted.text == stored.text) return true;
  const std::uint32_t type = m_section.TypeOf(id);
  return ValueBytes(wanted, type) == ValueBytes(stored, type);
}

std::string SectionEditor::CurrentBytes(const Section::Place& place) const {
  const auto changed = m_values.find(place.id);
  if (changed != m_values.end()) return changed->second;
  const bool names_changed = !m_removed.empty() || !m_added.empty();
  if (place.id == kDictionaryId && names_changed) return Dictionary();
  return std::string(m_section.RawValue(place));
}

std::string SectionEditor::Dictionary() const {
  std::string names;
  std::size_t count = 0;
  for (const Section::NameEntry& entry : m_section.NameEntries()) {
    if (m_removed.contains(entry.id)) continue;
    names += entry.bytes;
    if (m_section.CodePage() == kUtf16) Pad(names);
    ++count;
  }
  for (const Added& added : m_added) {
    AppendNumber(names, added.id);
    AppendName(names, added.name);
    ++count;
  }
  std::string bytes;
  AppendNumber(bytes, count);
  bytes += names;
  Pad(bytes);
  return bytes;
}

/// The length and the name, both with the terminating null. Only wide names are padded.
void SectionEditor::AppendName(std::string& bytes, const std::wstring& name) const {
  const unsigned page = m_section.CodePage();
  if (page == kUtf16) {
    AppendNumber(bytes, name.size() + 1);
    AppendWide(bytes, name);
    Pad(bytes);
    return;
  }
  const auto text = m_encode(name, page);
  if (!text) throw UnspellableName(name, page);
  AppendText(bytes, *text);
}

}  // namespace cad_host::property_set
