/// @file The properties that an edited property set shall have.
#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "cad_host/custom_property.h"

namespace cad_host {

/// The properties that the stream shall have, each until a section has taken it.
class WantedProperties {
 public:
  explicit WantedProperties(const CustomProperties& properties) : m_properties(properties) {
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

}  // namespace cad_host
