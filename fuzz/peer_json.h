/// @file JSON as another parser reads it, nlohmann/json, for comparison.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "detail/json_document.h"

namespace fuzz {

/// A value as the other parser reported it. Members keep their order; equal names stay apart.
struct PeerValue {
  enum class Type { kNull, kBoolean, kInteger, kDouble, kString, kArray, kObject };

  Type type = Type::kNull;
  std::string text{};                 ///< of a string; the digits of an integer; "true" or "false"
  double number = 0;                  ///< of a double
  std::vector<std::string> names{};   ///< of an object's members
  std::vector<PeerValue> elements{};  ///< of an array; the values of an object's members

  /// The value of the first member `name`; null if there is none or this is no object.
  const PeerValue* Find(std::string_view name) const;
  PeerValue* Find(std::string_view name);

  bool operator==(const PeerValue& other) const;
};

/// A string value.
PeerValue PeerString(std::string text);

/// `text` as the other parser reads it; nothing if it is malformed.
///
/// Where the parsers are known to differ, this follows the product:
/// - The other parser takes a null character for the end of the text; here it is a fault, as everywhere in
///   JSON.
/// - The other parser passes over a byte-order mark. Here it is a fault; the product reads it in files, where
///   it is taken off before the text is parsed.
/// - The other parser allows any depth; here more than 1,000 levels are a fault.
/// - The other parser keeps the last of equal names; here they stay apart, and the first one counts.
std::optional<PeerValue> ParseAsPeer(std::string_view text);

/// Whether both are the same value: the same types, members in the same order, doubles the same bit by bit.
bool IsSame(const JsonValue& value, const PeerValue& peer);

}  // namespace fuzz
