#include "property_set_stream.h"

#include <algorithm>

#include "files/property_set_section.h"

using namespace cad_host::property_set;

namespace {

// How a stream begins; the class follows.
constexpr std::uint16_t kLittleEndian = 0xFFFE;
constexpr std::uint16_t kVersion = 0;
constexpr std::uint32_t kWindows = 0x00020005;

}  // namespace

std::wstring DecodeLatin1(std::string_view bytes, unsigned code_page) {
  constexpr unsigned char kFirstSpecial = 0x80;
  std::wstring text;
  for (const char unit : bytes) {
    const auto character = static_cast<unsigned char>(unit);
    text += code_page == kLatin1 || character < kFirstSpecial ? static_cast<wchar_t>(character) : L'\xFFFD';
  }
  return text;
}

std::optional<std::string> EncodeLatin1(std::wstring_view text, unsigned code_page) {
  std::string bytes;
  for (const wchar_t character : text) bytes += static_cast<char>(character);
  if (DecodeLatin1(bytes, code_page) != text) return std::nullopt;
  return bytes;
}

std::string Wide(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += BytesOf(unit);
  return bytes;
}

std::string Name(std::string_view text) { return std::string(text) + '\0'; }

std::string WideName(std::u16string_view text) { return Wide(text) + std::string(sizeof(char16_t), '\0'); }

std::string Dictionary(const ById& names) {
  std::string bytes = Number(static_cast<std::uint32_t>(names.size()));
  for (const auto& [id, name] : names) {
    bytes += Number(id) + Number(static_cast<std::uint32_t>(name.size())) + name;
  }
  return bytes;
}

std::string WideDictionary(const ById& names) {
  std::string bytes = Number(static_cast<std::uint32_t>(names.size()));
  for (const auto& [id, name] : names) {
    bytes += Number(id) + Number(static_cast<std::uint32_t>(name.size() / sizeof(char16_t))) + name;
    bytes.resize((bytes.size() + 3) / 4 * 4);
  }
  return bytes;
}

std::string CodePageValue(std::uint16_t code_page) {
  return Number(kTypeShort) + BytesOf(code_page) + std::string(2, '\0');
}

std::string SectionOf(const ById& values) {
  const std::size_t head = kPropertyPlaces + values.size() * kPropertyPlaceSize;
  std::string places;
  std::string all;
  for (const auto& [id, bytes] : values) {
    places += Number(id) + Number(static_cast<std::uint32_t>(head + all.size()));
    all += bytes;
  }
  return Number(static_cast<std::uint32_t>(head + all.size())) +
         Number(static_cast<std::uint32_t>(values.size())) + places + all;
}

std::string StreamOf(const std::vector<std::pair<SectionId, std::string>>& sections) {
  const std::size_t head = kSectionPlaces + sections.size() * kSectionPlaceSize;
  std::string places;
  std::string all;
  for (const auto& [id, bytes] : sections) {
    places += std::string(id.begin(), id.end()) + Number(static_cast<std::uint32_t>(head + all.size()));
    all += bytes;
  }
  return BytesOf(kLittleEndian) + BytesOf(kVersion) + Number(kWindows) +
         std::string(sizeof(SectionId), '\0') + Number(static_cast<std::uint32_t>(sections.size())) + places +
         all;
}

std::string StreamOf(const ById& values) {
  return StreamOf(std::vector{std::pair{kUserDefined, SectionOf(values)}});
}

std::map<std::uint32_t, std::string> ValuesOf(const std::string& stream) {
  const std::vector<SectionBytes> sections = SectionsOf(stream);
  const auto user_defined = std::find_if(sections.begin(), sections.end(), [](const SectionBytes& section) {
    return section.id == kUserDefined;
  });
  if (user_defined == sections.end()) return {};
  const Section section(user_defined->bytes, DecodeLatin1);
  std::map<std::uint32_t, std::string> values;
  for (const Section::Place& place : section.Places()) values[place.id] = section.RawValue(place);
  return values;
}
