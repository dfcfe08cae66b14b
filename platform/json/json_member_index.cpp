#include "detail/json_member_index.h"

using rapidjson::SizeType;
using rapidjson::Value;

namespace {

// Up to here looking through all is as fast.
constexpr SizeType kFewMembers = 32;

std::string_view NameOf(const Value::Member& member) {
  return {member.name.GetString(), member.name.GetStringLength()};
}

}  // namespace

Value* JsonMemberIndex::Find(Value& object, std::string_view name) {
  if (object.MemberCount() <= kFewMembers) {
    const auto length = static_cast<SizeType>(name.size());
    const auto found = object.FindMember(Value(rapidjson::StringRef(name.data(), length)));
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

/// The memory of members is never used anew as long as their document lives: members at another place are
/// others, members at the same place are the same and perhaps some more.
void JsonMemberIndex::Update(Value& object) {
  const void* const members = &*object.MemberBegin();
  if (members != m_members || object.MemberCount() < m_count) Clear();
  m_members = members;
  for (; m_count < object.MemberCount(); ++m_count) {
    m_places.emplace(NameOf(*(object.MemberBegin() + m_count)), m_count);  // of equal names the first stays
  }
}
