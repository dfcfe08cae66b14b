#include "property_set_writer.h"

#include <windows.h>

#include <ole2.h>

#include "CStringHelper.h"
#include "property_set_format.h"
#include "property_set_texts.h"

namespace cad_host {
namespace {

using namespace property_set;

// Of the stream: byte order, version, system, class, number of sections; then id and place of the section.
constexpr WORD kLittleEndian = 0xFFFE;
constexpr WORD kVersion = 0;
constexpr DWORD kSystem = 0x00020005;  // Windows
constexpr DWORD kSections = 1;
constexpr DWORD kSectionPlace = 48;
constexpr std::size_t kAlignment = 4;  // of values
// Wine cannot read back all names of a UTF-16 set.
constexpr WORD kCodePage = kUtf8;

template <class T>
void Append(std::string& bytes, const T& value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string Padded(std::string bytes) {
  bytes.resize((bytes.size() + kAlignment - 1) / kAlignment * kAlignment);
  return bytes;
}

template <class T>
std::string Value(std::uint32_t type, const T& value) {
  std::string bytes;
  Append(bytes, type);
  Append(bytes, value);
  return Padded(bytes);
}

/// The length and then the text, both with the terminating null.
std::string TextValue(const std::wstring& text) {
  const std::size_t length = text.size() + 1;
  std::string bytes = Value(kTypeWideText, static_cast<DWORD>(length));
  bytes.append(reinterpret_cast<const char*>(text.c_str()), length * sizeof(wchar_t));
  return Padded(bytes);
}

/// The names by property id.
std::string Dictionary(const CustomProperties& properties) {
  std::string bytes;
  Append(bytes, static_cast<DWORD>(properties.size()));
  std::uint32_t id = kFirstId;
  for (const CustomProperty& property : properties) {
    const std::string name = CStringHelper::UnicodeToUTF8(property.name);
    Append(bytes, id++);
    Append(bytes, static_cast<DWORD>(name.size() + 1));
    bytes.append(name.c_str(), name.size() + 1);
  }
  return Padded(bytes);
}

std::string Section(const CustomProperties& properties) {
  const std::size_t count = 2 + properties.size();  // with the dictionary and the code page
  const std::size_t head = kPropertyPlaces + count * kPropertyPlaceSize;
  std::string places;
  std::string values;
  const auto add = [&](std::uint32_t id, const std::string& value) {
    Append(places, id);
    Append(places, static_cast<DWORD>(head + values.size()));
    values += value;
  };
  add(kDictionaryId, Dictionary(properties));
  add(kCodePageId, Value(kTypeShort, kCodePage));
  std::uint32_t id = kFirstId;
  for (const CustomProperty& property : properties) add(id++, PropertyValueBytes(property));
  std::string bytes;
  Append(bytes, static_cast<DWORD>(head + values.size()));
  Append(bytes, static_cast<DWORD>(count));
  return bytes + places + values;
}

}  // namespace

std::string PropertyValueBytes(const CustomProperty& property) {
  const std::wstring& text = property.text;
  if (property.type == swCustomInfoNumber) {
    if (const auto whole = WholeNumberOf(text)) return Value(kTypeNumber, *whole);
    if (const auto fraction = FractionOf(text)) return Value(kTypeDouble, *fraction);
  } else if (property.type == swCustomInfoYesOrNo) {
    if (const auto yes = YesOrNoOf(text)) return Value(kTypeBool, *yes ? VARIANT_TRUE : VARIANT_FALSE);
  } else if (property.type == swCustomInfoDate) {
    if (const auto date = DateOf(text)) return Value(kTypeFileTime, *date);
  }
  return TextValue(text);
}

std::string UserDefinedSection(const CustomProperties& properties) {
  std::string bytes;
  Append(bytes, kLittleEndian);
  Append(bytes, kVersion);
  Append(bytes, kSystem);
  Append(bytes, CLSID_NULL);
  Append(bytes, kSections);
  Append(bytes, kUserDefined);
  Append(bytes, kSectionPlace);
  return bytes + Section(properties);
}

}  // namespace cad_host
