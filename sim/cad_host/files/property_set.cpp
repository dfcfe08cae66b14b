#include "property_set.h"

#include <windows.h>

#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "property_set_reader.h"
#include "property_set_texts.h"
#include "property_set_writer.h"

namespace cad_host {
namespace {

// A stream beside the property set, for the properties that do not read back from the set as they were typed:
// a number value loses the form "1.50", and a text value loses the type. Each record has the name, the type
// and the text in the set, then the type and the text as typed.
constexpr const wchar_t* kAsTypedStream = L"PropertiesAsTyped";

std::wstring DecodeCodePage(std::string_view bytes, unsigned code_page) {
  const int size = static_cast<int>(bytes.size());
  std::wstring text;
  text.resize(static_cast<std::size_t>(MultiByteToWideChar(code_page, 0, bytes.data(), size, nullptr, 0)));
  MultiByteToWideChar(code_page, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
  return text;
}

bool SameValue(const CustomProperty& a, const CustomProperty& b) {
  return a.type == b.type && a.text == b.text;
}

/// @param stored `properties` as they read back, in the same order.
Records AsTypedTable(const CustomProperties& properties, const CustomProperties& stored) {
  Records records;
  for (std::size_t index = 0; index < properties.size(); ++index) {
    const CustomProperty& typed = properties[index];
    const CustomProperty& value = stored[index];
    if (SameValue(typed, value)) continue;
    records.push_back(
        {value.name, std::to_wstring(value.type), value.text, std::to_wstring(typed.type), typed.text});
  }
  return records;
}

CustomProperty PropertyOf(const Record& record, std::size_t type, std::size_t text) {
  return {.name = FieldOf(record, 0),
          .text = FieldOf(record, text),
          .type = static_cast<swCustomInfoType_e>(NumberOf(record, type))};
}

/// A property that another program has changed in the set keeps the changed value.
void RestoreAsTyped(const Records& records, CustomProperties& properties) {
  std::unordered_map<std::wstring_view, CustomProperty*> by_name;
  for (CustomProperty& property : properties) by_name.emplace(property.name, &property);
  for (const Record& record : records) {
    const CustomProperty stored = PropertyOf(record, 1, 2);
    const auto found = by_name.find(stored.name);
    if (found == by_name.end() || !SameValue(*found->second, stored)) continue;
    const CustomProperty typed = PropertyOf(record, 3, 4);
    found->second->type = typed.type;
    found->second->text = typed.text;
  }
}

}  // namespace

CustomProperties ReadProperties(const CompoundFile& file) {
  try {
    CustomProperties properties = ReadUserDefinedSection(file.ReadPropertySet(), DecodeCodePage);
    RestoreAsTyped(file.ReadTable(kAsTypedStream), properties);
    return properties;
  } catch (const std::out_of_range&) {
    file.Check(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), L"custom properties");
    throw;
  }
}

void WriteProperties(const CompoundFile& file, const CustomProperties& properties) {
  if (properties.empty()) return;
  const std::string set = UserDefinedSection(properties);
  file.WritePropertySet(set);
  file.WriteTable(kAsTypedStream, AsTypedTable(properties, ReadUserDefinedSection(set, DecodeCodePage)));
}

bool FitsType(const std::wstring& text, swCustomInfoType_e type) {
  if (text.empty() || text.find(L'"') != std::wstring::npos) return true;
  switch (type) {
    case swCustomInfoNumber:
      return FractionOf(text).has_value();
    case swCustomInfoYesOrNo:
      return YesOrNoOf(text).has_value();
    case swCustomInfoDate:
      return DateOf(text).has_value();
    case swCustomInfoText:
      return true;
  }
  return true;
}

}  // namespace cad_host
