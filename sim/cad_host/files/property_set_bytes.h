/// @file Appending little-endian values to the bytes of a property set.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cad_host::property_set {

template <class T>
void Append(std::string& bytes, const T& value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

/// The text as UTF-16, with the terminating null.
inline void AppendWide(std::string& bytes, std::wstring_view text) {
  for (const wchar_t character : text) Append(bytes, static_cast<char16_t>(character));
  Append(bytes, u'\0');
}

/// Values and wide names begin at multiples of 4 bytes.
inline void Pad(std::string& bytes) {
  constexpr std::size_t kAlignment = 4;
  bytes.resize((bytes.size() + kAlignment - 1) / kAlignment * kAlignment);
}

}  // namespace cad_host::property_set
