#include "property_set_reader.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <map>
#include <stdexcept>

#include "property_set_format.h"
#include "records.h"

namespace cad_host {
namespace {

using namespace property_set;

/// Reads little-endian values from bytes; throws std::out_of_range beyond the end.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}

  template <class T>
  T At(std::size_t offset) const {
    T value;
    std::memcpy(&value, Part(offset, sizeof value).data(), sizeof value);
    return value;
  }

  std::string_view Part(std::size_t offset, std::size_t size) const {
    if (offset > m_bytes.size() || m_bytes.size() - offset < size) throw std::out_of_range("property set");
    return m_bytes.substr(offset, size);
  }

 private:
  std::string_view m_bytes;
};

std::wstring WideText(std::string_view bytes) {
  std::wstring text;
  const Bytes units(bytes);
  for (std::size_t at = 0; at + sizeof(char16_t) <= bytes.size(); at += sizeof(char16_t)) {
    text += static_cast<wchar_t>(units.At<char16_t>(at));
  }
  return text;
}

/// The date such as "2024-05-31" of a number of 100 nanoseconds since 1601; "0000-00-00" if it is too large.
std::wstring DateText(std::uint64_t file_time) {
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  constexpr auto kBeginning = std::chrono::sys_days(std::chrono::year(1601) / 1 / 1);
  std::chrono::year_month_day date{};
  if (file_time <= INT64_MAX) {
    date = kBeginning + std::chrono::floor<std::chrono::days>(Ticks(static_cast<std::int64_t>(file_time)));
  }
  wchar_t text[16];
  std::swprintf(text, std::size(text), L"%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text;
}

/// A section of the stream.
class Section {
 public:
  Section(std::string_view bytes, CodePageDecoder decode) : m_bytes(bytes), m_decode(decode) {
    const auto count = m_bytes.At<std::uint32_t>(kPropertyCount);
    for (std::uint32_t index = 0; index < count; ++index) {
      const std::size_t place = kPropertyPlaces + std::size_t{index} * kPropertyPlaceSize;
      m_places[m_bytes.At<std::uint32_t>(place)] = m_bytes.At<std::uint32_t>(place + sizeof(std::uint32_t));
    }
  }

  CustomProperties Read() {
    if (!m_places.contains(kDictionaryId)) return {};
    if (m_places.contains(kCodePageId)) {
      m_codePage = m_bytes.At<std::uint16_t>(m_places[kCodePageId] + sizeof(std::uint32_t));
    }
    CustomProperties properties;
    for (const auto& [id, name] : Dictionary(m_places[kDictionaryId])) {
      if (!m_places.contains(id)) continue;
      properties.push_back(Value(m_places[id]));
      properties.back().name = name;
    }
    return properties;
  }

 private:
  /// The text up to its terminating null.
  std::wstring Text(std::size_t offset, std::size_t size, unsigned code_page) const {
    const std::string_view bytes = m_bytes.Part(offset, size);
    std::wstring text = code_page == kUtf16 ? WideText(bytes) : m_decode(bytes, code_page);
    text.resize(std::wcslen(text.c_str()));
    return text;
  }

  CustomProperty Value(std::size_t offset) const {
    const auto type = m_bytes.At<std::uint32_t>(offset);
    const std::size_t value = offset + sizeof type;
    const std::size_t text = value + sizeof(std::uint32_t);  // after its length
    switch (type) {
      case kTypeText:
        return {.name = {}, .text = Text(text, m_bytes.At<std::uint32_t>(value), m_codePage)};
      case kTypeWideText:
        return {.name = {}, .text = Text(text, m_bytes.At<std::uint32_t>(value) * sizeof(char16_t), kUtf16)};
      case kTypeNumber:
        return {
            .name = {}, .text = std::to_wstring(m_bytes.At<std::int32_t>(value)), .type = swCustomInfoNumber};
      case kTypeDouble:
        return {.name = {}, .text = DoubleText(m_bytes.At<double>(value)), .type = swCustomInfoNumber};
      case kTypeFileTime:
        return {.name = {}, .text = DateText(m_bytes.At<std::uint64_t>(value)), .type = swCustomInfoDate};
      case kTypeBool:
        return {
            .name = {}, .text = m_bytes.At<std::uint16_t>(value) ? kYes : kNo, .type = swCustomInfoYesOrNo};
      default:
        return {};
    }
  }

  /// Names by property id.
  std::map<std::uint32_t, std::wstring> Dictionary(std::size_t offset) const {
    const std::size_t unit = m_codePage == kUtf16 ? sizeof(char16_t) : sizeof(char);
    std::map<std::uint32_t, std::wstring> names;
    auto left = m_bytes.At<std::uint32_t>(offset);
    for (offset += sizeof left; left > 0; --left) {
      const auto id = m_bytes.At<std::uint32_t>(offset);
      const std::size_t size = unit * m_bytes.At<std::uint32_t>(offset + sizeof id);
      offset += 2 * sizeof(std::uint32_t);
      names[id] = Text(offset, size, m_codePage);
      offset += m_codePage == kUtf16 ? (size + 3) / 4 * 4 : size;  // only wide names are padded
    }
    return names;
  }

  Bytes m_bytes;
  CodePageDecoder m_decode;
  std::map<std::uint32_t, std::uint32_t> m_places;  // of values, by property id
  unsigned m_codePage = kSystemCodePage;
};

}  // namespace

CustomProperties ReadUserDefinedSection(std::string_view stream, CodePageDecoder decode) {
  if (stream.empty()) return {};
  const Bytes bytes(stream);
  const auto count = bytes.At<std::uint32_t>(kSectionCount);
  for (std::uint32_t index = 0; index < count; ++index) {
    const std::size_t place = kSectionPlaces + std::size_t{index} * kSectionPlaceSize;
    if (bytes.At<SectionId>(place) != kUserDefined) continue;
    // The size field of the section is ignored: a section that Wine writes is shorter than its size field
    // says, because Wine leaves out the bytes after the last value.
    const auto offset = bytes.At<std::uint32_t>(place + sizeof(SectionId));
    return Section(stream.substr(std::min<std::size_t>(offset, stream.size())), decode).Read();
  }
  return {};
}

}  // namespace cad_host
