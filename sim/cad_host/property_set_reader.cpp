#include "property_set_reader.h"

#include <windows.h>

#include <ole2.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <map>
#include <stdexcept>
#include <string>

#include "compound_file.h"
#include "property_set_texts.h"
#include "records.h"

namespace cad_host {
namespace {

// Of the stream: a header whose last member is the number of sections, then id and place of each.
constexpr std::size_t kSectionCount = 24;
constexpr std::size_t kSectionPlaces = 28;
constexpr std::size_t kSectionPlaceSize = 20;
// Of a section: its size, the number of properties, then id and place of each.
constexpr std::size_t kPropertyPlaces = 8;
constexpr UINT kUtf16 = 1200;

/// Bytes that are read in little-endian order, and never beyond their end.
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

/// The text up to its final null.
std::wstring Text(std::string_view bytes, UINT code_page) {
  std::wstring text;
  if (code_page == kUtf16) {
    text.resize(bytes.size() / sizeof(wchar_t));
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  } else {
    const int size = static_cast<int>(bytes.size());
    text.resize(static_cast<std::size_t>(MultiByteToWideChar(code_page, 0, bytes.data(), size, nullptr, 0)));
    MultiByteToWideChar(code_page, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
  }
  text.resize(std::wcslen(text.c_str()));
  return text;
}

CustomProperty ReadValue(const Bytes& section, std::size_t offset, UINT code_page) {
  const auto type = section.At<DWORD>(offset);
  const std::size_t value = offset + sizeof type;
  const std::size_t text = value + sizeof(DWORD);  // behind its length
  switch (type) {
    case VT_LPSTR:
      return {.name = {}, .text = Text(section.Part(text, section.At<DWORD>(value)), code_page)};
    case VT_LPWSTR:
      return {.name = {},
              .text = Text(section.Part(text, section.At<DWORD>(value) * sizeof(wchar_t)), kUtf16)};
    case VT_I4:
      return {.name = {}, .text = std::to_wstring(section.At<LONG>(value)), .type = swCustomInfoNumber};
    case VT_R8:
      return {.name = {}, .text = DoubleText(section.At<double>(value)), .type = swCustomInfoNumber};
    case VT_FILETIME:
      return {.name = {}, .text = DateText(section.At<FILETIME>(value)), .type = swCustomInfoDate};
    case VT_BOOL:
      return {.name = {}, .text = section.At<VARIANT_BOOL>(value) ? kYes : kNo, .type = swCustomInfoYesOrNo};
    default:
      return {};
  }
}

/// Names by property id.
std::map<DWORD, std::wstring> ReadDictionary(const Bytes& section, std::size_t offset, UINT code_page) {
  const std::size_t unit = code_page == kUtf16 ? sizeof(wchar_t) : sizeof(char);
  std::map<DWORD, std::wstring> names;
  auto left = section.At<DWORD>(offset);
  for (offset += sizeof left; left > 0; --left) {
    const auto id = section.At<DWORD>(offset);
    const std::size_t size = unit * section.At<DWORD>(offset + sizeof id);
    offset += 2 * sizeof(DWORD);
    names[id] = Text(section.Part(offset, size), code_page);
    offset += code_page == kUtf16 ? (size + 3) / 4 * 4 : size;  // only wide names are padded
  }
  return names;
}

CustomProperties ReadSection(const Bytes& section) {
  std::map<DWORD, DWORD> places;
  const auto count = section.At<DWORD>(sizeof(DWORD));
  for (DWORD index = 0; index < count; ++index) {
    const std::size_t place = kPropertyPlaces + index * 2 * sizeof(DWORD);
    places[section.At<DWORD>(place)] = section.At<DWORD>(place + sizeof(DWORD));
  }
  if (!places.contains(PID_DICTIONARY)) return {};
  const UINT code_page =
      places.contains(PID_CODEPAGE) ? section.At<WORD>(places[PID_CODEPAGE] + sizeof(DWORD)) : CP_ACP;
  CustomProperties properties;
  for (const auto& [id, name] : ReadDictionary(section, places[PID_DICTIONARY], code_page)) {
    if (!places.contains(id)) continue;
    properties.push_back(ReadValue(section, places[id], code_page));
    properties.back().name = name;
  }
  return properties;
}

}  // namespace

CustomProperties ReadUserDefinedSection(std::string_view stream) {
  if (stream.empty()) return {};
  const Bytes bytes(stream);
  const auto count = bytes.At<DWORD>(kSectionCount);
  for (DWORD index = 0; index < count; ++index) {
    const std::size_t place = kSectionPlaces + index * kSectionPlaceSize;
    if (bytes.At<FMTID>(place) != kUserDefinedProperties) continue;
    // The size that the section tells is not looked at: what Wine writes is shorter than it tells, for it
    // leaves out what should follow the last value.
    const auto offset = bytes.At<DWORD>(place + sizeof(FMTID));
    return ReadSection(Bytes(stream.substr(std::min<std::size_t>(offset, stream.size()))));
  }
  return {};
}

}  // namespace cad_host
