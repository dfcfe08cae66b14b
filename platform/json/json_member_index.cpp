#include "detail/json_member_index.h"

#include <bit>
#include <cstddef>
#include <functional>
#include <limits>

using rapidjson::SizeType;

namespace {

// Up to this number a linear search is as fast.
constexpr SizeType kFewMembers = 32;

constexpr SizeType kEmpty = std::numeric_limits<SizeType>::max();

std::string_view NameOf(const JsonValue& object, SizeType place) {
  const JsonValue& name = (object.MemberBegin() + place)->name;
  return {name.GetString(), name.GetStringLength()};
}

}  // namespace

JsonValue* JsonMemberIndex::Find(JsonValue& object, std::string_view name) {
  if (object.MemberCount() <= kFewMembers) {
    const auto length = static_cast<SizeType>(name.size());
    const auto found = object.FindMember(JsonValue(rapidjson::StringRef(name.data(), length)));
    return found == object.MemberEnd() ? nullptr : &found->value;
  }
  Update(object);
  const SizeType place = SlotOf(object, name);
  return place == kEmpty ? nullptr : &(object.MemberBegin() + place)->value;
}

void JsonMemberIndex::Clear() {
  m_slots.clear();
  m_members = nullptr;
  m_count = 0;
}

/// A document does not reuse the memory of members before it is destroyed. So members at another address are
/// different members, or the same after their number has outgrown the memory; members at the same address are
/// the same, and new ones may follow them.
void JsonMemberIndex::Update(const JsonValue& object) {
  const void* const members = &*object.MemberBegin();
  const SizeType count = object.MemberCount();
  if (members != m_members || count < m_count || m_slots.size() < 2 * std::size_t{count}) {
    m_slots.assign(std::bit_ceil(4 * std::size_t{count}), kEmpty);
    m_members = members;
    m_count = 0;
  }
  for (; m_count < count; ++m_count) {
    SizeType& slot = SlotOf(object, NameOf(object, m_count));
    if (slot == kEmpty) slot = m_count;  // keeps the first of equal names
  }
}

/// The slot that has the place of the member `name`, or the empty one in which it belongs.
SizeType& JsonMemberIndex::SlotOf(const JsonValue& object, std::string_view name) {
  const std::size_t last = m_slots.size() - 1;
  for (std::size_t slot = std::hash<std::string_view>()(name) & last;; slot = (slot + 1) & last) {
    SizeType& place = m_slots[slot];
    if (place == kEmpty || NameOf(object, place) == name) return place;
  }
}
