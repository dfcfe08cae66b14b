/// @file The layout of a property set stream; all numbers are little-endian.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace cad_host::property_set {

/// The stream begins with a header of 28 bytes; its last member is the number of sections. The id and the
/// place of each section follow.
inline constexpr std::size_t kSectionCount = 24;
inline constexpr std::size_t kSectionPlaces = 28;
inline constexpr std::size_t kSectionPlaceSize = 20;

using SectionId = std::array<unsigned char, 16>;

/// {D5CDD505-2E9C-101B-9397-08002B2CF9AE}: the section for user-defined properties.
inline constexpr SectionId kUserDefined = {0x05, 0xd5, 0xcd, 0xd5, 0x9c, 0x2e, 0x1b, 0x10,
                                           0x93, 0x97, 0x08, 0x00, 0x2b, 0x2c, 0xf9, 0xae};

/// A section begins with its size and the number of its properties. The id and the place of each property
/// follow.
inline constexpr std::size_t kPropertyCount = 4;
inline constexpr std::size_t kPropertyPlaces = 8;
inline constexpr std::size_t kPropertyPlaceSize = 8;

/// Reserved ids; the properties themselves have the ids after them.
inline constexpr std::uint32_t kDictionaryId = 0;  ///< the names of the properties by id
inline constexpr std::uint32_t kCodePageId = 1;    ///< of the names and of the texts that are not wide
inline constexpr std::uint32_t kFirstId = 2;
/// The value of a property that is linked to content of the document has a second value without a name, which
/// says to what it is linked. The id of that is the property's with this bit. From 0x80000000 on, ids are
/// reserved again.
inline constexpr std::uint32_t kLinkBit = 0x01000000;

/// Types of values; each value follows its type.
inline constexpr std::uint32_t kTypeShort = 2;
inline constexpr std::uint32_t kTypeNumber = 3;
inline constexpr std::uint32_t kTypeDouble = 5;
inline constexpr std::uint32_t kTypeBstr = 8;  ///< like kTypeText
inline constexpr std::uint32_t kTypeBool = 11;
inline constexpr std::uint32_t kTypeUnsigned = 19;
inline constexpr std::uint32_t kTypeLongNumber = 20;
inline constexpr std::uint32_t kTypeText = 30;      ///< in the section's code page, after its length in bytes
inline constexpr std::uint32_t kTypeWideText = 31;  ///< UTF-16, after its length in units
inline constexpr std::uint32_t kTypeFileTime = 64;

/// The texts of a yes/no property.
inline constexpr const wchar_t* kYes = L"Yes";
inline constexpr const wchar_t* kNo = L"No";

/// Code pages.
inline constexpr unsigned kSystemCodePage = 0;
inline constexpr unsigned kUtf16 = 1200;
inline constexpr unsigned kUtf8 = 65001;

}  // namespace cad_host::property_set
