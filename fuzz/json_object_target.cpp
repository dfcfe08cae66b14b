#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "CJsonObject.h"
#include "base/utf8.h"
#include "peer_json.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {
namespace {

using Type = PeerValue::Type;

// More members and levels say nothing new, and take time.
constexpr std::size_t kMostNames = 64;
constexpr int kMostLevels = 6;

std::wstring Wide(std::string_view text) { return utf8::Decode<wchar_t>(text); }

/// The code of the exception that `call` throws; 0 if it throws none.
template <class Call>
long CodeOf(const Call& call) {
  try {
    call();
    return 0;
  } catch (const CZALException& exception) {
    return exception.GetErrorCode();
  }
}

/// Whether `json` says the same as `peer`.
bool Says(const std::wstring& json, const PeerValue& peer) {
  const std::optional<PeerValue> read = ParseAsPeer(utf8::Encode(std::wstring_view(json)));
  return read && *read == peer;
}

bool IsText(const std::wstring& text, const PeerValue& peer) {
  if (peer.type == Type::kNull) return text.empty();
  return peer.type == Type::kString ? text == Wide(peer.text) : Says(text, peer);
}

long ExpectedLong(const PeerValue& peer) {
  if (peer.type != Type::kInteger || peer.text.size() > std::size("-2147483648") - 1) return 0;
  const long long number = std::stoll(peer.text);
  using Limits = std::numeric_limits<std::int32_t>;
  return number >= Limits::min() && number <= Limits::max() ? static_cast<long>(number) : 0;
}

void RequireTexts(const CJsonObject& object, const std::wstring& key, const PeerValue& peer) {
  const bool is_array = peer.type == Type::kArray;
  const bool are_texts = is_array && std::ranges::all_of(peer.elements, [](const PeerValue& element) {
                           return element.type == Type::kString;
                         });
  std::pair<bool, std::vector<std::wstring>> texts;
  const long code = CodeOf([&] { texts = object.GetPropertyStringArrayValue(key); });
  Require(code == (are_texts ? 0 : platform_code::kJsonWrongType),
          "only an array of strings is read as texts");
  if (!are_texts) return;
  Require(texts.first && std::ranges::equal(texts.second, peer.elements, IsText), "the texts of an array");
}

void RequireObjects(const CJsonObject& object, const std::wstring& key, const PeerValue& peer) {
  const bool are_objects =
      peer.type == Type::kArray && std::ranges::all_of(peer.elements, [](const PeerValue& element) {
        return element.type == Type::kObject;
      });
  std::vector<CJsonObject::Pointer> objects;
  const long code = CodeOf([&] { objects = object.GetObjectArray(key); });
  Require(code == (are_objects ? 0 : platform_code::kJsonWrongType),
          "only an array of objects is read as objects");
  if (!are_objects) return;
  Require(std::ranges::equal(objects, peer.elements,
                             [](const CJsonObject::Pointer& element, const PeerValue& expected) {
                               return Says(element->ToJson(), expected);
                             }),
          "the objects of an array");
}

void RequireObject(const CJsonObject& object, const std::wstring& key, const PeerValue& peer) {
  const long expected = peer.type == Type::kObject ? 0 : platform_code::kJsonWrongType;
  CJsonObject::Pointer copy;
  Require(CodeOf([&] { copy = object.GetObjectCopy(key); }) == expected, "only an object is copied");
  if (copy) Require(Says(copy->ToJson(), peer), "a copy of an object");
  CJsonObject::Pointer shared;
  Require(CodeOf([&] { shared = object.GetObjectShared(key); }) == expected, "only an object is shared");
  if (shared) Require(Says(shared->ToJson(), peer), "a view of an object");
}

void RequireMember(const CJsonObject& object, const std::string& name, const PeerValue& peer) {
  const std::wstring key = Wide(name);
  const bool is_boolean = peer.type == Type::kBoolean;
  Require(object.IsExist(key), "a member exists");
  Require(IsText(object.GetStringValue(key), peer), "the text of a member");
  Require(object.FindStringValue(key) == object.GetStringValue(key), "a member's text is found");
  Require(object.GetLongValue(key) == ExpectedLong(peer), "the integer of a member");
  Require(object.GetPropertyBoolValue(key) == std::pair(is_boolean, is_boolean && peer.text == "true"),
          "the boolean of a member");
  RequireTexts(object, key, peer);
  RequireObjects(object, key, peer);
  RequireObject(object, key, peer);
}

void RequireMissing(const CJsonObject& object, const std::wstring& key) {
  Require(!object.IsExist(key) && !object.FindStringValue(key) && object.GetStringValue(key).empty(),
          "a missing member has no text");
  Require(object.GetLongValue(key) == 0, "a missing member is no integer");
  Require(object.GetPropertyBoolValue(key) == std::pair(false, false), "a missing member is no boolean");
  Require(!object.GetPropertyStringArrayValue(key).first, "a missing member is no array");
  const auto code_of = [](const auto& call) { return CodeOf(call) == platform_code::kJsonMemberMissing; };
  Require(code_of([&] { object.GetObjectArray(key); }) && code_of([&] { object.GetObjectCopy(key); }) &&
              code_of([&] { object.GetObjectShared(key); }),
          "a missing member is no object");
}

/// A name that no member of `peer` has.
std::string UnusedName(const PeerValue& peer) {
  std::string name = "none";
  while (peer.Find(name)) name += "+";
  return name;
}

/// Everything that can be read of `object`, and of the views of its members.
void RequireReadable(const CJsonObject& object, const PeerValue& peer, int level) {
  Require(Says(object.ToJson(), peer), "what is written is what was read");
  const std::size_t count = std::min(peer.names.size(), kMostNames);
  for (std::size_t index = 0; index < count; ++index) {
    const std::string& name = peer.names[index];
    const PeerValue& member = *peer.Find(name);
    RequireMember(object, name, member);
    if (member.type == Type::kObject && level < kMostLevels) {
      RequireReadable(*object.GetObjectShared(Wide(name)), member, level + 1);
    }
  }
  RequireMissing(object, Wide(UnusedName(peer)));
}

/// Sets `name` in both.
void Set(CJsonObject& object, PeerValue& peer, const std::string& name, const std::string& text) {
  object.SetStringValue(Wide(name), Wide(text));
  if (peer.type != Type::kObject) peer = {.type = Type::kObject};
  if (PeerValue* const member = peer.Find(name)) {
    *member = PeerString(text);
  } else {
    peer.names.push_back(name);
    peer.elements.push_back(PeerString(text));
  }
}

/// Changes through a view, a new member, a replaced one, and a copy of it all.
void RequireWritable(CJsonObject& object, PeerValue peer) {
  const std::string text = "\"\\\x01 \xE9\x9B\xB6";
  const auto child = std::ranges::find(peer.elements, Type::kObject, &PeerValue::type);
  if (peer.type == Type::kObject && child != peer.elements.end()) {
    const std::string& name = peer.names[static_cast<std::size_t>(child - peer.elements.begin())];
    PeerValue& member = *peer.Find(name);
    if (member.type == Type::kObject) {
      Set(*object.GetObjectShared(Wide(name)), member, UnusedName(member), text);
      Require(Says(object.ToJson(), peer), "a change through a view changes its parent");
    }
  }
  if (!peer.names.empty()) Set(object, peer, std::string(peer.names.back()), text);
  Set(object, peer, UnusedName(peer), text);
  Require(Says(object.ToJson(), peer), "a change changes one member");
  RequireReadable(object, peer, kMostLevels);

  CJsonObject copy;
  copy.CopyFrom(object);
  object.SetStringValue(L"later", L"change");
  Require(Says(copy.ToJson(), peer), "a copy is a copy");
}

/// An object with many members. Each has a byte as its name and its place as its value.
void TryManyMembers(std::string_view bytes) {
  constexpr long kMissing = -1;
  constexpr std::size_t kMost = 1000;
  std::array<long, 256> first{};
  first.fill(kMissing);
  std::wstring text;
  for (std::size_t place = 0; place < std::min(bytes.size(), kMost); ++place) {
    const auto byte = static_cast<unsigned char>(bytes[place]);
    if (first[byte] == kMissing) first[byte] = static_cast<long>(place);
    text += (text.empty() ? L"{\"" : L",\"") + std::to_wstring(byte) + L"\":" + std::to_wstring(place);
  }
  CJsonObject object;
  object.CreateFrom(text + L"}");
  for (std::size_t byte = 0; byte < first.size(); ++byte) {
    const std::wstring name = std::to_wstring(byte);
    Require(object.IsExist(name) == (first[byte] != kMissing), "each member of many is found");
    Require(object.GetLongValue(name) == std::max(first[byte], 0L),
            "the first of equal names counts among many");
  }
}

}  // namespace

void TryJsonObject(std::string_view bytes) {
  const std::wstring text = Wide(bytes);
  const std::optional<PeerValue> peer = ParseAsPeer(utf8::Encode(std::wstring_view(text)));
  CJsonObject object;
  Require(object.CreateFrom(text) == peer.has_value(), "the parsers agree on what is well-formed");
  const PeerValue expected = peer ? *peer : PeerValue{.type = Type::kObject};
  RequireReadable(object, expected, 1);
  RequireWritable(object, expected);
  TryManyMembers(bytes);
}

}  // namespace fuzz
