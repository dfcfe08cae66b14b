#include <cstddef>
#include <stdexcept>

#include "files/compound_directory.h"
#include "promise.h"
#include "targets.h"

namespace fuzz {

void TryCompoundDirectory(std::string_view bytes) {
  try {
    for (const cad_host::DirectoryEntry& entry : cad_host::DirectoryOf(bytes)) {
      Require(entry.offset + cad_host::kEntryFirstSector <= bytes.size(),
              "the fields of an entry lie in the file");
      Require(entry.class_id.size() == cad_host::kEntryStateBits - cad_host::kEntryClassId,
              "a class has 16 bytes");
    }
    const std::size_t size = cad_host::SectorSize(bytes);
    Require((size & (size - 1)) == 0, "the size of a sector is a power of 2");
  } catch (const std::out_of_range&) {  // damaged
  }
}

}  // namespace fuzz
