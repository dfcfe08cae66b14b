/// @file The directory of a compound file, read from the file's bytes: Wine does not show all of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

struct DirectoryEntry {
  std::wstring path;       ///< such as `Geometry\Faces`; a storage's ends with `\`, the root's is empty
  std::size_t offset = 0;  ///< of the entry in the file
  std::string class_id;    ///< 16 bytes
  std::uint32_t state_bits = 0;
  std::uint64_t created = 0;  ///< 100 nanoseconds since 1601; 0 if not set
  std::uint64_t modified = 0;
};

/// Places in an entry.
inline constexpr std::size_t kEntryClassId = 80;
inline constexpr std::size_t kEntryStateBits = 96;
inline constexpr std::size_t kEntryCreated = 100;
inline constexpr std::size_t kEntryModified = 108;
inline constexpr std::size_t kEntryFirstSector = 116;

/// The size of a sector of the file, such as 512. @throws std::out_of_range like DirectoryOf.
std::size_t SectorSize(std::string_view file);

/// How many sectors beside the header have the places of the allocation table; 0 in a file of less than 7 MB.
/// @throws std::out_of_range like DirectoryOf.
std::uint32_t ExtraTableSectors(std::string_view file);

/// All entries, each storage before what is in it. @throws std::out_of_range if the file is damaged.
std::vector<DirectoryEntry> DirectoryOf(std::string_view file);

}  // namespace cad_host
