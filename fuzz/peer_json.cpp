#include "peer_json.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

namespace fuzz {
namespace {

constexpr std::size_t kMaximumLevels = 1000;

/// Builds the tree of values from what the other parser reports.
class TreeBuilder : public nlohmann::json_sax<nlohmann::json> {
 public:
  PeerValue Take() { return std::move(m_root); }

  bool null() override { return Put({}); }
  bool boolean(bool value) override {
    return Put({.type = PeerValue::Type::kBoolean, .text = value ? "true" : "false"});
  }
  bool number_integer(number_integer_t value) override { return PutInteger(std::to_string(value)); }
  bool number_unsigned(number_unsigned_t value) override { return PutInteger(std::to_string(value)); }
  bool number_float(number_float_t value, const string_t&) override {
    return Put({.type = PeerValue::Type::kDouble, .number = value});
  }
  bool string(string_t& value) override { return Put(PeerString(value)); }
  bool binary(binary_t&) override { return false; }

  bool start_object(std::size_t) override { return Enter(PeerValue::Type::kObject); }
  bool key(string_t& name) override {
    m_open.back()->names.push_back(name);
    return true;
  }
  bool end_object() override { return Leave(); }
  bool start_array(std::size_t) override { return Enter(PeerValue::Type::kArray); }
  bool end_array() override { return Leave(); }

  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
    return false;
  }

 private:
  PeerValue& Place(PeerValue value) {
    if (m_open.empty()) return m_root = std::move(value);
    return m_open.back()->elements.emplace_back(std::move(value));
  }

  bool Put(PeerValue value) {
    Place(std::move(value));
    return true;
  }

  bool PutInteger(std::string digits) {
    return Put({.type = PeerValue::Type::kInteger, .text = std::move(digits)});
  }

  bool Enter(PeerValue::Type type) {
    m_open.push_back(&Place({.type = type}));
    return m_open.size() <= kMaximumLevels;
  }

  bool Leave() {
    m_open.pop_back();
    return true;
  }

  PeerValue m_root;
  std::vector<PeerValue*> m_open;  // the arrays and objects around the next value, from the root
};

std::string_view TextOf(const JsonValue& value) { return {value.GetString(), value.GetStringLength()}; }

bool IsSameNumber(const JsonValue& value, const PeerValue& peer) {
  if (value.IsUint64()) return peer.text == std::to_string(value.GetUint64());
  if (value.IsInt64()) return peer.text == std::to_string(value.GetInt64());
  return peer.type == PeerValue::Type::kDouble &&
         std::bit_cast<std::uint64_t>(value.GetDouble()) == std::bit_cast<std::uint64_t>(peer.number);
}

bool HasSameMembers(const JsonValue& object, const PeerValue& peer) {
  if (peer.type != PeerValue::Type::kObject || object.MemberCount() != peer.names.size()) return false;
  auto member = object.MemberBegin();
  for (std::size_t index = 0; index < peer.names.size(); ++index, ++member) {
    if (TextOf(member->name) != peer.names[index] || !IsSame(member->value, peer.elements[index]))
      return false;
  }
  return true;
}

}  // namespace

const PeerValue* PeerValue::Find(std::string_view name) const {
  const auto found = std::ranges::find(names, name);
  return found == names.end() ? nullptr : &elements[static_cast<std::size_t>(found - names.begin())];
}

PeerValue* PeerValue::Find(std::string_view name) {
  return const_cast<PeerValue*>(std::as_const(*this).Find(name));
}

bool PeerValue::operator==(const PeerValue& other) const {
  return type == other.type && text == other.text &&
         std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(other.number) &&
         names == other.names && elements == other.elements;
}

PeerValue PeerString(std::string text) { return {.type = PeerValue::Type::kString, .text = std::move(text)}; }

std::optional<PeerValue> ParseAsPeer(std::string_view text) {
  if (text.find('\0') != text.npos || text.starts_with("\xEF\xBB\xBF")) return std::nullopt;
  TreeBuilder tree;
  if (!nlohmann::json::sax_parse(text, &tree)) return std::nullopt;
  return tree.Take();
}

bool IsSame(const JsonValue& value, const PeerValue& peer) {
  switch (value.GetType()) {
    case rapidjson::kNullType:
      return peer.type == PeerValue::Type::kNull;
    case rapidjson::kFalseType:
    case rapidjson::kTrueType:
      return peer.type == PeerValue::Type::kBoolean && peer.text == (value.GetBool() ? "true" : "false");
    case rapidjson::kNumberType:
      return IsSameNumber(value, peer);
    case rapidjson::kStringType:
      return peer.type == PeerValue::Type::kString && TextOf(value) == peer.text;
    case rapidjson::kArrayType:
      return peer.type == PeerValue::Type::kArray &&
             std::equal(value.Begin(), value.End(), peer.elements.begin(), peer.elements.end(), IsSame);
    case rapidjson::kObjectType:
      return HasSameMembers(value, peer);
  }
  return false;
}

}  // namespace fuzz
