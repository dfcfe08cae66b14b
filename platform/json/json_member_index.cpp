#include "detail/json_member_index.h"

using rapidjson::SizeType;

namespace {

// Up to this number a linear search is as fast.
constexpr SizeType kFewMembers = 32;

std::string_view NameOf(const JsonValue::Member& member) {
  return {member.name.GetString(), member.name.GetStringLength()};
}

}  // namespace

JsonValue* JsonMemberIndex::Find(JsonValue& object, std::string_view name) {
  if (object.MemberCount() <= kFewMembers) {
    const auto length = static_cast<SizeType>(name.size());
    const auto found = object.FindMember(JsonValue(rapidjson::StringRef(name.data(), length)));
    return found == object.MemberEnd() ? nullptr : &found->value;
  }
  Update(object);
  const auto found = m_places.find(name);
  return found == m_places.end() ? nullptr : &(object.MemberBegin() + found->second)->value;
}

void JsonMemberIndex::Clear() {
  m_places.clear();
  m_members = nullptr;
  m_count = 0;
}

/// A document does not reuse the memory of members before it is destroyed. So members at another address are
/// different members; members at the same address are the same, and new ones may follow them.
void JsonMemberIndex::Update(JsonValue& object) {
  const void* const members = &*object.MemberBegin();
  if (members != m_members || object.MemberCount() < m_count) Clear();
  m_members = members;
  for (; m_count < object.MemberCount(); ++m_count) {
    m_places.emplace(NameOf(*(object.MemberBegin() + m_count)), m_count);  // keeps the first of equal names
  }
}
