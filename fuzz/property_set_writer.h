/// @file Property sets with content of every kind.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "cad_host/custom_property.h"
#include "choices.h"

namespace fuzz {

/// A stream, and what is read of it.
struct WrittenPropertySet {
  std::string stream{};
  cad_host::CustomProperties properties{};
  /// Of the first section: the values without a name that say to what the property of a name is linked.
  std::map<std::uint32_t, std::wstring> links{};
};

/// A property set with the content and the layout that the choices say.
WrittenPropertySet WritePropertySet(Choices choices);

}  // namespace fuzz
