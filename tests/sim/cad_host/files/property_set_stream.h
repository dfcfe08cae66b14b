/// @file Property set streams, byte by byte, as other programs may write them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "files/property_set_format.h"

inline constexpr std::uint16_t kLatin1 = 28591;

/// The code page of a system that knows only Latin-1: of any other page, the bytes from 0x80 on become
/// U+FFFD.
std::wstring DecodeLatin1(std::string_view bytes, unsigned code_page);

/// Empty for a text that DecodeLatin1 never returns for other bytes than those of U+FFFD.
std::optional<std::string> EncodeLatin1(std::wstring_view text, unsigned code_page);

template <class T>
std::string BytesOf(T value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

inline std::string Number(std::uint32_t value) { return BytesOf(value); }

/// The text as UTF-16, without a terminating null.
std::string Wide(std::u16string_view text);

/// A name of a dictionary, with the terminating null.
std::string Name(std::string_view text);
std::string WideName(std::u16string_view text);

/// Bytes by ids: the names of a dictionary, or the values of a section.
using ById = std::vector<std::pair<std::uint32_t, std::string>>;

/// A dictionary; wide names are padded.
std::string Dictionary(const ById& names);
std::string WideDictionary(const ById& names);

/// The value of the code page.
std::string CodePageValue(std::uint16_t code_page);

/// A section with the values in this order, not padded.
std::string SectionOf(const ById& values);

/// A stream with the sections by their ids.
std::string StreamOf(const std::vector<std::pair<cad_host::property_set::SectionId, std::string>>& sections);

/// A stream with one user-defined section.
std::string StreamOf(const ById& values);

/// The values of the first user-defined section by id, each up to the next one or the end.
std::map<std::uint32_t, std::string> ValuesOf(const std::string& stream);
