#include "property_set.h"

#include <windows.h>

#include <optional>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "property_set_editor.h"
#include "property_set_reader.h"
#include "property_set_texts.h"
#include "property_set_writer.h"

namespace cad_host {
namespace {

std::wstring DecodeCodePage(std::string_view bytes, unsigned code_page) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(code_page, 0, bytes.data(), size, nullptr, 0);
  if (length == 0) throw UnknownCodePage(code_page);
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(code_page, 0, bytes.data(), size, text.data(), length);
  return text;
}

/// Empty if the text does not read back the same.
std::optional<std::string> EncodeCodePage(std::wstring_view text, unsigned code_page) {
  const int size = static_cast<int>(text.size());
  std::string bytes;
  const int length = WideCharToMultiByte(code_page, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  WideCharToMultiByte(code_page, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  if (DecodeCodePage(bytes, code_page) != text) return std::nullopt;
  return bytes;
}

/// Calls `step`, whose errors get the name of the file.
template <class Step>
auto WithFileName(const CompoundFile& file, Step step) {
  try {
    return step();
  } catch (const std::out_of_range&) {
    file.Check(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), L"custom properties");
    throw;
  } catch (const UnknownCodePage& failure) {
    const std::wstring text = L"its code page " + std::to_wstring(failure.code_page) + L" is unknown";
    file.Check(HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION), text.c_str());
    throw;
  } catch (const UnspellableName& failure) {
    const std::wstring text = L"its code page " + std::to_wstring(failure.code_page) +
                              L" cannot spell the name of the property \"" + failure.name + L"\"";
    file.Check(HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION), text.c_str());
    throw;
  }
}

bool SameValue(const CustomProperty& a, const CustomProperty& b) {
  return a.type == b.type && a.text == b.text;
}

/// @param stored `properties` as they read back, in any order.
Records AsTypedTable(const CustomProperties& properties, const CustomProperties& stored) {
  std::unordered_map<std::wstring_view, const CustomProperty*> by_name;
  for (const CustomProperty& property : stored) by_name.emplace(property.name, &property);
  Records records;
  for (const CustomProperty& typed : properties) {
    const auto found = by_name.find(typed.name);
    if (found == by_name.end() || SameValue(typed, *found->second)) continue;
    const CustomProperty& value = *found->second;
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
  return WithFileName(file, [&] { return ReadUserDefinedSections(file.ReadPropertySet(), DecodeCodePage); });
}

CustomProperties ReadPropertiesAsTyped(const CompoundFile& file) {
  CustomProperties properties = ReadProperties(file);
  RestoreAsTyped(file.ReadTable(kAsTypedStream), properties);
  return properties;
}

void WriteProperties(const CompoundFile& file, const CustomProperties& properties) {
  const std::string old_set = file.ReadPropertySet();
  if (old_set.empty() && properties.empty()) return;
  const std::string set = WithFileName(file, [&] {
    return old_set.empty() ? UserDefinedSection(properties)
                           : EditUserDefinedSections(old_set, properties, DecodeCodePage, EncodeCodePage);
  });
  if (set != old_set) file.WritePropertySet(set);
}

void WritePropertiesAsTyped(const CompoundFile& file, const CustomProperties& properties) {
  WriteProperties(file, properties);
  const Records records = AsTypedTable(properties, ReadProperties(file));
  if (!properties.empty() || file.Has(kAsTypedStream)) file.WriteTable(kAsTypedStream, records);
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
