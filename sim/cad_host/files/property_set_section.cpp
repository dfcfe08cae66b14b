#include "property_set_section.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <stdexcept>

#include "property_set_texts.h"
#include "records.h"

namespace cad_host::property_set {
namespace {

template <class T>
T At(const Bytes& bytes, std::size_t offset) {
  T value;
  std::memcpy(&value, bytes.Part(offset, sizeof value).data(), sizeof value);
  return value;
}

std::wstring WideText(std::string_view bytes) {
  std::wstring text;
  const Bytes units(bytes);
  for (std::size_t at = 0; at + sizeof(char16_t) <= bytes.size(); at += sizeof(char16_t)) {
    text += static_cast<wchar_t>(units.Short(at));
  }
  return text;
}

/// The first of the sorted `offsets` beyond `offset`, or `end`.
std::size_t NextOffset(const std::vector<std::size_t>& offsets, std::size_t offset, std::size_t end) {
  const auto next = std::upper_bound(offsets.begin(), offsets.end(), offset);
  return next == offsets.end() ? end : std::min(*next, end);
}

}  // namespace

std::uint16_t Bytes::Short(std::size_t offset) const { return At<std::uint16_t>(*this, offset); }
std::uint32_t Bytes::Number(std::size_t offset) const { return At<std::uint32_t>(*this, offset); }
std::uint64_t Bytes::LongNumber(std::size_t offset) const { return At<std::uint64_t>(*this, offset); }
double Bytes::Double(std::size_t offset) const { return At<double>(*this, offset); }

std::string_view Bytes::Part(std::size_t offset, std::size_t size) const {
  if (offset > m_bytes.size() || m_bytes.size() - offset < size) throw std::out_of_range("property set");
  return m_bytes.substr(offset, size);
}

Section::Section(std::string_view bytes, CodePageDecoder decode)
    : m_all(bytes), m_bytes(bytes), m_decode(decode) {
  const std::uint32_t count = m_bytes.Number(kPropertyCount);
  for (std::uint32_t index = 0; index < count; ++index) {
    const std::size_t place = kPropertyPlaces + std::size_t{index} * kPropertyPlaceSize;
    m_places.push_back({m_bytes.Number(place), m_bytes.Number(place + sizeof(std::uint32_t))});
    m_byId[m_places.back().id] = m_places.back().offset;
    m_offsets.push_back(m_places.back().offset);
  }
  std::sort(m_offsets.begin(), m_offsets.end());
  if (const auto page = m_byId.find(kCodePageId); page != m_byId.end()) {
    m_codePage = m_bytes.Short(page->second + sizeof(std::uint32_t));
  }
  if (const auto dictionary = m_byId.find(kDictionaryId); dictionary != m_byId.end()) {
    ReadDictionary(dictionary->second);
  }
}

CustomProperties Section::Read() const {
  CustomProperties properties;
  for (const auto& [id, name] : m_names) {
    if (id >= kFirstId && Has(id)) properties.push_back(Property(id));
  }
  return properties;
}

CustomProperty Section::Property(std::uint32_t id) const {
  CustomProperty property = Value(m_bytes, m_byId.at(id));
  const auto name = m_names.find(id);
  if (name != m_names.end()) property.name = name->second;
  return property;
}

std::uint32_t Section::TypeOf(std::uint32_t id) const { return m_bytes.Number(m_byId.at(id)); }

std::string_view Section::RawValue(const Place& place) const {
  const std::size_t end = NextOffset(m_offsets, place.offset, m_all.size());
  const std::string_view bytes = m_bytes.Part(place.offset, end - std::min<std::size_t>(end, place.offset));
  RequireWhole(place.id, Bytes(bytes));
  return bytes;
}

/// Throws if the value of the id is not whole in its bytes, because the next value begins inside it.
void Section::RequireWhole(std::uint32_t id, const Bytes& bytes) const {
  if (id == kDictionaryId) {
    bytes.Part(0, m_dictionarySize);
  } else if (id == kCodePageId) {
    bytes.Short(sizeof(std::uint32_t));
  } else {
    Value(bytes, 0);
  }
}

/// The text up to its terminating null.
std::wstring Section::Text(std::string_view bytes, unsigned code_page) const {
  std::wstring text = code_page == kUtf16 ? WideText(bytes) : m_decode(bytes, code_page);
  text.resize(std::wcslen(text.c_str()));
  return text;
}

CustomProperty Section::Value(const Bytes& bytes, std::size_t offset) const {
  const std::uint32_t type = bytes.Number(offset);
  const std::size_t value = offset + sizeof type;
  const std::size_t text = value + sizeof(std::uint32_t);  // after its length
  const auto number = [](std::wstring digits) {
    return CustomProperty{.name = {}, .text = std::move(digits), .type = swCustomInfoNumber};
  };
  switch (type) {
    case kTypeText:
    case kTypeBstr:
      return {.name = {}, .text = Text(bytes.Part(text, bytes.Number(value)), m_codePage)};
    case kTypeWideText:
      return {.name = {}, .text = Text(bytes.Part(text, bytes.Number(value) * sizeof(char16_t)), kUtf16)};
    case kTypeShort:
      return number(std::to_wstring(static_cast<std::int16_t>(bytes.Short(value))));
    case kTypeNumber:
      return number(std::to_wstring(static_cast<std::int32_t>(bytes.Number(value))));
    case kTypeUnsigned:
      return number(std::to_wstring(bytes.Number(value)));
    case kTypeLongNumber:
      return number(std::to_wstring(static_cast<std::int64_t>(bytes.LongNumber(value))));
    case kTypeDouble:
      return number(DoubleText(bytes.Double(value)));
    case kTypeFileTime:
      return {.name = {}, .text = DateText(bytes.LongNumber(value)), .type = swCustomInfoDate};
    case kTypeBool:
      return {.name = {}, .text = bytes.Short(value) ? kYes : kNo, .type = swCustomInfoYesOrNo};
    default:
      return {};
  }
}

void Section::ReadDictionary(std::size_t offset) {
  const std::size_t unit = m_codePage == kUtf16 ? sizeof(char16_t) : sizeof(char);
  const std::size_t dictionary = offset;
  std::uint32_t left = m_bytes.Number(offset);
  m_dictionarySize = sizeof left;
  for (offset += sizeof left; left > 0; --left) {
    const std::size_t begin = offset;
    const std::uint32_t id = m_bytes.Number(offset);
    const std::size_t size = unit * m_bytes.Number(offset + sizeof id);
    offset += 2 * sizeof(std::uint32_t);
    m_names[id] = Text(m_bytes.Part(offset, size), m_codePage);
    m_dictionarySize = offset + size - dictionary;
    offset += m_codePage == kUtf16 ? (size + 3) / 4 * 4 : size;  // only wide names are padded
    // The last name of a section may lack its padding.
    m_nameEntries.push_back({id, m_bytes.Part(begin, std::min(offset, m_all.size()) - begin)});
  }
}

std::vector<SectionBytes> SectionsOf(std::string_view stream) {
  if (stream.empty()) return {};
  const Bytes bytes(stream);
  const std::uint32_t count = bytes.Number(kSectionCount);
  std::vector<SectionId> ids;
  std::vector<std::size_t> offsets;
  for (std::uint32_t index = 0; index < count; ++index) {
    const std::size_t place = kSectionPlaces + std::size_t{index} * kSectionPlaceSize;
    ids.emplace_back();
    std::memcpy(ids.back().data(), bytes.Part(place, sizeof(SectionId)).data(), sizeof(SectionId));
    offsets.push_back(std::min<std::size_t>(bytes.Number(place + sizeof(SectionId)), stream.size()));
  }
  std::vector<std::size_t> sorted = offsets;
  std::sort(sorted.begin(), sorted.end());
  std::vector<SectionBytes> sections;
  for (std::size_t index = 0; index < ids.size(); ++index) {
    // The size field of the section is ignored: a section that Wine writes is shorter than its size field
    // says, because Wine leaves out the bytes after the last value.
    const std::size_t end = NextOffset(sorted, offsets[index], stream.size());
    sections.push_back({ids[index], stream.substr(offsets[index], end - offsets[index])});
  }
  return sections;
}

}  // namespace cad_host::property_set
