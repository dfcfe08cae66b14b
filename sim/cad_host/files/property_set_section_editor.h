/// @file Changes one user-defined section of a property set stream.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cad_host/custom_property.h"
#include "code_pages.h"
#include "property_set_section.h"
#include "wanted_properties.h"

namespace cad_host::property_set {

/// A user-defined section with its changes; EditUserDefinedSections says what becomes of the values.
class SectionEditor {
 public:
  /// @param bytes of the section; must outlive the object.
  /// @throws std::out_of_range if the section is cut off; UnknownCodePage.
  SectionEditor(std::string_view bytes, CodePageDecoder decode, CodePageEncoder encode);

  /// Takes the values of the properties that the section has, and removes those that are not wanted.
  void Change(WantedProperties& wanted);

  /// Adds a property whose name the section does not have.
  void Add(const CustomProperty& property);

  /// The bytes of the section with its changes. @throws UnspellableName.
  std::string Result() const;

 private:
  struct Added {
    std::uint32_t id;
    std::wstring name;
    std::string value;
  };

  std::uint32_t UnusedId() const;
  std::string ValueBytes(const CustomProperty& property, std::uint32_t old_type) const;
  bool SameStoredValue(const CustomProperty& wanted, std::uint32_t id) const;
  std::string CurrentBytes(const Section::Place& place) const;
  std::string Dictionary() const;
  void AppendName(std::string& bytes, const std::wstring& name) const;

  std::string_view m_bytes;
  Section m_section;
  CodePageEncoder m_encode;
  std::map<std::uint32_t, std::string> m_values;  // the changed ones, by id
  std::set<std::uint32_t> m_removed;
  std::vector<Added> m_added;
  std::set<std::uint32_t> m_usedIds = {kFirstId - 1};  // by names and values, below the ids of links
};

}  // namespace cad_host::property_set
