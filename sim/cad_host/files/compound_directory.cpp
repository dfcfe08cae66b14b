#include "compound_directory.h"

#include <cstring>
#include <stdexcept>

namespace cad_host {
namespace {

// In the header of the file.
constexpr std::size_t kSectorShift = 30;
constexpr std::uint16_t kSmallestShift = 7;  // entries of the directory do not cross sectors
constexpr std::uint16_t kLargestShift = 16;
constexpr std::size_t kFirstDirectorySector = 48;
constexpr std::size_t kFirstExtraTableSector = 68;
constexpr std::size_t kExtraTableSectors = 72;
constexpr std::size_t kTableSectors = 76;
constexpr std::size_t kTableSectorsInHeader = 109;

constexpr std::uint32_t kLastSector = 0xFFFFFFFA;  // numbers beyond it are marks, such as the end of a chain

// In an entry of the directory.
constexpr std::size_t kEntrySize = 128;
constexpr std::size_t kNameSize = 64;  // in bytes, with the terminating null
constexpr std::size_t kType = 66;
constexpr std::size_t kLeft = 68;
constexpr std::size_t kRight = 72;
constexpr std::size_t kChild = 76;
constexpr std::uint8_t kStream = 2;
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;

[[noreturn]] void ThrowDamaged() { throw std::out_of_range("compound file"); }

template <class T>
T At(std::string_view bytes, std::size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) ThrowDamaged();
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// The size of a sector as a power of 2.
unsigned SectorShift(std::string_view file) {
  const auto shift = At<std::uint16_t>(file, kSectorShift);
  if (shift < kSmallestShift || shift > kLargestShift) ThrowDamaged();
  return shift;
}

/// The numbers of sectors of a file, and the places of its directory.
class Sectors {
 public:
  explicit Sectors(std::string_view file)
      : m_file(file), m_size(SectorSize(file)), m_numberShift(SectorShift(file) - 2), m_table(Table()) {}

  /// The offsets of all entries of the directory, used or not.
  std::vector<std::size_t> EntryOffsets() const {
    std::vector<std::size_t> offsets;
    for (auto sector = At<std::uint32_t>(m_file, kFirstDirectorySector); sector < kLastSector;
         sector = Next(sector)) {
      const std::size_t begin = OffsetOf(sector);
      for (std::size_t place = 0; place < m_size; place += kEntrySize) offsets.push_back(begin + place);
      if (offsets.size() * kEntrySize > m_file.size()) ThrowDamaged();  // the chain is a circle
    }
    return offsets;
  }

 private:
  /// How many numbers are in a sector.
  std::size_t Numbers() const { return std::size_t{1} << m_numberShift; }

  std::size_t OffsetOf(std::uint32_t sector) const { return (std::size_t{sector} + 1) * m_size; }

  std::uint32_t Next(std::uint32_t sector) const {
    const std::size_t index = sector >> m_numberShift;
    if (index >= m_table.size()) ThrowDamaged();
    return NumberIn(m_table[index], sector & (Numbers() - 1));
  }

  std::uint32_t NumberIn(std::uint32_t sector, std::size_t index) const {
    return At<std::uint32_t>(m_file, OffsetOf(sector) + index * sizeof(std::uint32_t));
  }

  /// The sectors of the allocation table.
  std::vector<std::uint32_t> Table() const {
    std::vector<std::uint32_t> sectors;
    for (std::size_t index = 0; index < kTableSectorsInHeader; ++index) {
      sectors.push_back(At<std::uint32_t>(m_file, kTableSectors + index * sizeof(std::uint32_t)));
    }
    // The last number in a further sector is that of the next one.
    for (auto extra = At<std::uint32_t>(m_file, kFirstExtraTableSector); extra < kLastSector;
         extra = NumberIn(extra, Numbers() - 1)) {
      for (std::size_t index = 0; index + 1 < Numbers(); ++index) sectors.push_back(NumberIn(extra, index));
      if (sectors.size() * sizeof(std::uint32_t) > m_file.size()) ThrowDamaged();  // the chain is a circle
    }
    return sectors;
  }

  std::string_view m_file;
  std::size_t m_size;
  unsigned m_numberShift;  // a number has 4 bytes
  std::vector<std::uint32_t> m_table;
};

class Directory {
 public:
  explicit Directory(std::string_view file) : m_file(file), m_offsets(Sectors(file).EntryOffsets()) {
    if (m_offsets.empty()) ThrowDamaged();
    Add(L"", m_offsets[0]);
    AddTree(L"", At<std::uint32_t>(m_file, m_offsets[0] + kChild));
  }

  std::vector<DirectoryEntry>& Entries() { return m_entries; }

 private:
  void Add(const std::wstring& path, std::size_t offset) {
    if (m_entries.size() == m_offsets.size()) ThrowDamaged();  // an entry is its own child
    DirectoryEntry entry{.path = path,
                         .offset = offset,
                         .class_id = {},
                         .state_bits = At<std::uint32_t>(m_file, offset + kEntryStateBits),
                         .created = At<std::uint64_t>(m_file, offset + kEntryCreated),
                         .modified = At<std::uint64_t>(m_file, offset + kEntryModified)};
    entry.class_id = m_file.substr(offset + kEntryClassId, kEntryStateBits - kEntryClassId);
    m_entries.push_back(std::move(entry));
  }

  /// The elements of one storage are a tree; `index` is its top.
  void AddTree(const std::wstring& folder, std::uint32_t index) {
    if (index == kNoEntry) return;
    if (index >= m_offsets.size()) ThrowDamaged();
    const std::size_t offset = m_offsets[index];
    const bool stream = At<std::uint8_t>(m_file, offset + kType) == kStream;
    const std::wstring path = folder + NameAt(offset) + (stream ? L"" : L"\\");
    Add(path, offset);
    if (!stream) AddTree(path, At<std::uint32_t>(m_file, offset + kChild));
    AddTree(folder, At<std::uint32_t>(m_file, offset + kLeft));
    AddTree(folder, At<std::uint32_t>(m_file, offset + kRight));
  }

  std::wstring NameAt(std::size_t entry) const {
    const std::size_t size = At<std::uint16_t>(m_file, entry + kNameSize);
    if (size > kNameSize) ThrowDamaged();
    std::wstring name;
    for (std::size_t at = 0; at + sizeof(char16_t) < size; at += sizeof(char16_t)) {
      name += static_cast<wchar_t>(At<char16_t>(m_file, entry + at));
    }
    return name;
  }

  std::string_view m_file;
  std::vector<std::size_t> m_offsets;
  std::vector<DirectoryEntry> m_entries;
};

}  // namespace

std::size_t SectorSize(std::string_view file) { return std::size_t{1} << SectorShift(file); }

std::uint32_t ExtraTableSectors(std::string_view file) { return At<std::uint32_t>(file, kExtraTableSectors); }

std::vector<DirectoryEntry> DirectoryOf(std::string_view file) {
  return std::move(Directory(file).Entries());
}

}  // namespace cad_host
