#include "property_set_writer.h"

#include <limits>

#include "CStringHelper.h"
#include "property_set_bytes.h"
#include "property_set_format.h"
#include "property_set_texts.h"

namespace cad_host {
namespace {

using namespace property_set;

// Of the stream: byte order, version, system, class, number of sections; then id and place of the section.
constexpr std::uint16_t kLittleEndian = 0xFFFE;
constexpr std::uint16_t kVersion = 0;
constexpr std::uint32_t kSystem = 0x00020005;  // Windows
constexpr SectionId kNoClass = {};
constexpr std::uint32_t kSections = 1;
constexpr auto kSectionPlace = static_cast<std::uint32_t>(kSectionPlaces + kSectionPlaceSize);
// Wine cannot read back all names of a UTF-16 set.
constexpr std::uint16_t kCodePage = kUtf8;

constexpr std::uint16_t kTrue = 0xFFFF;
constexpr std::uint16_t kFalse = 0;

std::string Padded(std::string bytes) {
  Pad(bytes);
  return bytes;
}

template <class T>
std::string Value(std::uint32_t type, const T& value) {
  std::string bytes;
  Append(bytes, type);
  Append(bytes, value);
  return Padded(bytes);
}

/// The number as a value of `type`, whose values are those of T; empty if it is beyond them.
template <class T>
std::optional<std::string> WholeValue(std::uint32_t type, std::int64_t number) {
  using Limits = std::numeric_limits<T>;
  if (number < std::int64_t{Limits::min()} || number > std::int64_t{Limits::max()}) return std::nullopt;
  return Value(type, static_cast<T>(number));
}

/// The length and then the text, both with the terminating null.
std::string TextValue(const std::wstring& text) {
  std::string bytes = Value(kTypeWideText, static_cast<std::uint32_t>(text.size() + 1));
  AppendWide(bytes, text);
  return Padded(bytes);
}

/// The names by property id.
std::string Dictionary(const CustomProperties& properties) {
  std::string bytes;
  Append(bytes, static_cast<std::uint32_t>(properties.size()));
  std::uint32_t id = kFirstId;
  for (const CustomProperty& property : properties) {
    const std::string name = CStringHelper::UnicodeToUTF8(property.name);
    Append(bytes, id++);
    Append(bytes, static_cast<std::uint32_t>(name.size() + 1));
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
    Append(places, static_cast<std::uint32_t>(head + values.size()));
    values += value;
  };
  add(kDictionaryId, Dictionary(properties));
  add(kCodePageId, Value(kTypeShort, kCodePage));
  std::uint32_t id = kFirstId;
  for (const CustomProperty& property : properties) add(id++, PropertyValueBytes(property));
  std::string bytes;
  Append(bytes, static_cast<std::uint32_t>(head + values.size()));
  Append(bytes, static_cast<std::uint32_t>(count));
  return bytes + places + values;
}

}  // namespace

std::optional<std::string> NumberValueBytes(const std::wstring& text, std::uint32_t type) {
  if (type == kTypeDouble) {
    const auto fraction = FractionOf(text);
    if (!fraction) return std::nullopt;
    return Value(type, *fraction);
  }
  const auto whole = WholeNumberOf(text);
  if (!whole) return std::nullopt;
  switch (type) {
    case kTypeShort:
      return WholeValue<std::int16_t>(type, *whole);
    case kTypeNumber:
      return WholeValue<std::int32_t>(type, *whole);
    case kTypeUnsigned:
      return WholeValue<std::uint32_t>(type, *whole);
    case kTypeLongNumber:
      return WholeValue<std::int64_t>(type, *whole);
    default:
      return std::nullopt;
  }
}

std::string PropertyValueBytes(const CustomProperty& property) {
  const std::wstring& text = property.text;
  if (property.type == swCustomInfoNumber) {
    if (const auto whole = NumberValueBytes(text, kTypeNumber)) return *whole;
    if (const auto fraction = NumberValueBytes(text, kTypeDouble)) return *fraction;
  } else if (property.type == swCustomInfoYesOrNo) {
    if (const auto yes = YesOrNoOf(text)) return Value(kTypeBool, *yes ? kTrue : kFalse);
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
  Append(bytes, kNoClass);
  Append(bytes, kSections);
  Append(bytes, kUserDefined);
  Append(bytes, kSectionPlace);
  return bytes + Section(properties);
}

}  // namespace cad_host
