#include "configuration/view_faults.h"

#include <algorithm>

#include "CZALException.h"
#include "view_place.h"

namespace {

using Faults = std::vector<std::wstring>;

/// The member `key` of `object`; null if it is missing.
const CJsonObject::Value* FindMember(const CJsonObject& object, const std::wstring& key) {
  const CJsonObject::Document& document = *object.Share();
  if (!document.IsObject()) return nullptr;
  const auto member = document.FindMember(CStringHelper::UnicodeToUTF8(key).c_str());
  return member == document.MemberEnd() ? nullptr : &member->value;
}

/// What is wrong with a text; empty if nothing is.
std::wstring TextFault(const CJsonObject& object, const std::wstring& key) {
  const CJsonObject::Value* const value = FindMember(object, key);
  if (!value) return L" is missing";
  return value->IsString() ? L"" : L" is not a text";
}

/// What is wrong with a text by which a person finds the menu or the item; empty if nothing is.
std::wstring NameFault(const CJsonObject& object) {
  std::wstring fault = TextFault(object, L"name");
  return fault.empty() && object.GetStringValue(L"name").empty() ? L" is empty" : fault;
}

/// What is wrong with the name of a callback; empty if nothing is.
std::wstring CallbackFault(const CJsonObject& item, const std::wstring& key, const ViewRules& rules) {
  if (std::wstring fault = TextFault(item, key); !fault.empty()) return fault;
  const std::wstring name = item.GetStringValue(key);
  if (rules.is_command(name)) return {};
  return L": " + Quoted(name) +
         (rules.is_enable_method(name) ? L" is an enable method, not a command"
                                       : L" is not a method of the add-in");
}

/// What is wrong with the name of an enable method; empty if nothing is.
std::wstring EnableMethodFault(const CJsonObject& item, const std::wstring& key, const ViewRules& rules) {
  if (std::wstring fault = TextFault(item, key); !fault.empty()) return fault;
  const std::wstring name = item.GetStringValue(key);
  if (rules.is_enable_method(name)) return {};
  return L": " + Quoted(name) +
         (rules.is_command(name) ? L" is a command, not an enable method"
                                 : L" is not a method of the add-in");
}

/// What is wrong with the number of the icon; empty if nothing is.
std::wstring IconFault(const CJsonObject& item, const std::wstring& key, const ViewRules& rules) {
  const CJsonObject::Value* const value = FindMember(item, key);
  if (!value) return L" is missing";
  if (!value->IsNumber()) return L" is not a number";
  if (value->IsInt() && value->GetInt() >= 0 && value->GetInt() < rules.icons) return {};
  return L": " + item.GetStringValue(key) + L" is not the number of an icon, 0 to " +
         std::to_wstring(rules.icons - 1);
}

/// Adds the fault of the member `key`, if it has one.
void Add(Faults& faults, const std::wstring& place, const std::wstring& key, const std::wstring& fault) {
  if (!fault.empty()) faults.push_back(place + Quoted(key) + fault);
}

/// Adds each key that stands in `object` more than once.
void AddRepeatedKeys(Faults& faults, const std::wstring& place, const CJsonObject& object) {
  if (!object.Share()->IsObject()) return;
  std::vector<std::string> keys;
  for (const auto& member : object.Share()->GetObject()) {
    keys.emplace_back(member.name.GetString(), member.name.GetStringLength());
  }
  std::sort(keys.begin(), keys.end());
  for (auto key = keys.begin(); (key = std::adjacent_find(key, keys.end())) != keys.end();) {
    Add(faults, place, CStringHelper::UTF8ToUnicode(*key), L" is given more than once; the first one counts");
    key = std::upper_bound(key, keys.end(), *key);
  }
}

void AddItemFaults(Faults& faults, const std::wstring& place, const CJsonObject& item,
                   const ViewRules& rules) {
  Add(faults, place, L"name", NameFault(item));
  for (const wchar_t* key : {L"ToolTip", L"Hint"}) Add(faults, place, key, TextFault(item, key));
  Add(faults, place, L"CallbackFunction", CallbackFault(item, L"CallbackFunction", rules));
  Add(faults, place, L"EnableMethod", EnableMethodFault(item, L"EnableMethod", rules));
  Add(faults, place, L"ImageListIndex", IconFault(item, L"ImageListIndex", rules));
  AddRepeatedKeys(faults, place, item);
}

}  // namespace

std::vector<std::wstring> FindViewFaults(const CJsonObject& view,
                                         const std::vector<CJsonObject::Pointer>& items,
                                         const ViewRules& rules) {
  Faults faults;
  if (items.size() > rules.maximum_items) {
    faults.push_back(L"\"Menu\" has " + std::to_wstring(items.size()) + L" items; only the first " +
                     std::to_wstring(rules.maximum_items) + L" are added");
  }
  Add(faults, {}, L"name", NameFault(view));
  AddRepeatedKeys(faults, {}, view);
  for (std::size_t index = 0; index < std::min(items.size(), rules.maximum_items); ++index) {
    const CJsonObject& item = *items[index];
    AddItemFaults(faults, PlaceOf(index, item), item, rules);
  }
  return faults;
}

std::vector<std::wstring> FindViewFaults(const CJsonObject& view, const ViewRules& rules) {
  try {
    return FindViewFaults(view, view.GetObjectArray(L"Menu"), rules);
  } catch (const CZALException& error) {
    return {error.GetErrorMessage()};
  }
}
