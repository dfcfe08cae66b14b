#include "image.h"

#include <windows.h>
// After windows.h, which it needs.
#include <dbghelp.h>

#include <span>
#include <stdexcept>

namespace {

template <typename Table>
std::span<const Table> TablesOf(std::string& bytes, USHORT directory) {
  ULONG size = 0;
  const void* const found = ImageDirectoryEntryToDataEx(bytes.data(), FALSE, directory, &size, nullptr);
  return {static_cast<const Table*>(found), found ? size / sizeof(Table) : 0};
}

/// The times of a folder of resources and of those below it.
void AddResources(const char* section, DWORD offset, std::vector<Stamp>& stamps) {
  const auto& folder = *reinterpret_cast<const IMAGE_RESOURCE_DIRECTORY*>(section + offset);
  stamps.push_back({"resources", folder.TimeDateStamp});
  const std::span entries(reinterpret_cast<const IMAGE_RESOURCE_DIRECTORY_ENTRY*>(&folder + 1),
                          static_cast<std::size_t>(folder.NumberOfNamedEntries) + folder.NumberOfIdEntries);
  for (const auto& entry : entries) {
    if (entry.DataIsDirectory) AddResources(section, entry.OffsetToDirectory, stamps);
  }
}

}  // namespace

std::vector<Stamp> Stamps(std::string bytes) {
  const IMAGE_NT_HEADERS* const header = ImageNtHeader(bytes.data());
  if (!header) throw std::runtime_error("no program for Windows");
  std::vector<Stamp> stamps{{"header", header->FileHeader.TimeDateStamp}};
  // Of exports there is one table, which the names follow.
  if (const auto exports = TablesOf<IMAGE_EXPORT_DIRECTORY>(bytes, IMAGE_DIRECTORY_ENTRY_EXPORT);
      !exports.empty()) {
    stamps.push_back({"exports", exports.front().TimeDateStamp});
  }
  for (const auto& import : TablesOf<IMAGE_IMPORT_DESCRIPTOR>(bytes, IMAGE_DIRECTORY_ENTRY_IMPORT)) {
    if (import.Name == 0) break;  // the end of the table; names follow
    stamps.push_back({"imports", import.TimeDateStamp});
  }
  for (const auto& debug : TablesOf<IMAGE_DEBUG_DIRECTORY>(bytes, IMAGE_DIRECTORY_ENTRY_DEBUG)) {
    stamps.push_back({"debug", debug.TimeDateStamp});
  }
  const auto resources = TablesOf<char>(bytes, IMAGE_DIRECTORY_ENTRY_RESOURCE);
  if (!resources.empty()) AddResources(resources.data(), 0, stamps);
  return stamps;
}
