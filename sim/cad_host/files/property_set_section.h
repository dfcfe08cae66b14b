/// @file One section of a property set stream, as its writer laid it out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cad_host/custom_property.h"
#include "property_set_format.h"
#include "property_set_reader.h"

namespace cad_host::property_set {

/// Reads little-endian values from bytes; throws std::out_of_range beyond the end.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}

  std::uint16_t Short(std::size_t offset) const;
  std::uint32_t Number(std::size_t offset) const;
  std::uint64_t LongNumber(std::size_t offset) const;
  double Double(std::size_t offset) const;
  std::string_view Part(std::size_t offset, std::size_t size) const;

 private:
  std::string_view m_bytes;
};

/// A section of the stream. Its methods throw std::out_of_range if the section is cut off.
class Section {
 public:
  /// @param bytes begin with the section; must outlive the object.
  Section(std::string_view bytes, CodePageDecoder decode);

  struct Place {
    std::uint32_t id;
    std::uint32_t offset;
  };

  /// The places of all values, in their order in the section.
  const std::vector<Place>& Places() const { return m_places; }

  /// The names of properties by id; empty if the section has no dictionary.
  const std::map<std::uint32_t, std::wstring>& Names() const { return m_names; }

  /// An entry of the dictionary.
  struct NameEntry {
    std::uint32_t id;
    std::string_view bytes;  ///< all of it: the id, the length and the name
  };

  /// The entries of the dictionary, in their order.
  const std::vector<NameEntry>& NameEntries() const { return m_nameEntries; }

  /// The code page of names and of texts that are not wide.
  unsigned CodePage() const { return m_codePage; }

  /// The properties that have a name and a value, in the order of their ids. A reserved id is no property's,
  /// even if it has a name.
  CustomProperties Read() const;

  /// Whether a value has the id.
  bool Has(std::uint32_t id) const { return m_byId.contains(id); }

  /// The property with the id, which must have a place. A value of an unknown type is the empty text.
  CustomProperty Property(std::uint32_t id) const;

  /// The type of the value of the property with the id, which must have a place.
  std::uint32_t TypeOf(std::uint32_t id) const;

  /// The bytes of the value at the place, up to the next value or the end of the section. A value inside
  /// which another begins counts as cut off.
  std::string_view RawValue(const Place& place) const;

 private:
  std::wstring Text(std::string_view bytes, unsigned code_page) const;
  CustomProperty Value(const Bytes& bytes, std::size_t offset) const;
  void RequireWhole(std::uint32_t id, const Bytes& bytes) const;
  void ReadDictionary(std::size_t offset);

  std::string_view m_all;
  Bytes m_bytes;
  CodePageDecoder m_decode;
  std::vector<Place> m_places;
  std::map<std::uint32_t, std::size_t> m_byId;  // the last offset of each id
  std::vector<std::size_t> m_offsets;           // of all values, sorted
  std::map<std::uint32_t, std::wstring> m_names;
  std::vector<NameEntry> m_nameEntries;
  std::size_t m_dictionarySize = 0;  // without the padding of its last name
  unsigned m_codePage = kSystemCodePage;
};

/// A section's id and its bytes, up to the next section or the end of the stream.
struct SectionBytes {
  SectionId id;
  std::string_view bytes;
};

/// The sections of a stream. @throws std::out_of_range if the stream is cut off.
std::vector<SectionBytes> SectionsOf(std::string_view stream);

}  // namespace cad_host::property_set
