/// @file Looking members of large JSON objects up.
#pragma once

#include <string_view>
#include <unordered_map>

#include "detail/rapidjson_config.h"

/// Finds members of one object by name in a time that does not grow with their number, where RapidJSON looks
/// through all. It notices by itself that the object got other members or more of them, as long as nobody
/// takes single members away.
class JsonMemberIndex {
 public:
  /// The value of the first member `name` of `object`; null if there is none.
  rapidjson::Value* Find(rapidjson::Value& object, std::string_view name);

  /// To be called when the memory of the object's members may be used anew.
  void Clear();

 private:
  void Update(rapidjson::Value& object);

  // The texts are those of the members themselves.
  std::unordered_map<std::string_view, rapidjson::SizeType> m_places;
  const void* m_members = nullptr;
  rapidjson::SizeType m_count = 0;  // how many members, from the first on, have been looked at
};
