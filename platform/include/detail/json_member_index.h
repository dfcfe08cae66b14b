/// @file Fast lookup of members in large JSON objects.
#pragma once

#include <string_view>
#include <vector>

#include "detail/json_document.h"

/// Finds members of one object by name in a time that does not grow with their number; RapidJSON's own search
/// checks every member. It notices if all members were replaced or members were added, but not if single
/// members were removed.
class JsonMemberIndex {
 public:
  /// The value of the first member `name` of `object`; null if it is missing.
  JsonValue* Find(JsonValue& object, std::string_view name);

  /// Call this when the memory of the object's members may be reused.
  void Clear();

 private:
  void Update(const JsonValue& object);
  rapidjson::SizeType& SlotOf(const JsonValue& object, std::string_view name);

  // A hash table: the places of the members, and kEmpty. Its size is a power of two, at least twice the
  // number of members.
  std::vector<rapidjson::SizeType> m_slots;
  const void* m_members = nullptr;
  rapidjson::SizeType m_count = 0;  // the number of members indexed so far
};
