#include "directory_fields.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unordered_map>

#include "base/system_path.h"
#include "cad_host/host_error.h"
#include "compound_directory.h"

namespace cad_host {
namespace {

std::string BytesOfFile(const std::wstring& path) {
  std::ifstream file(SystemPath(path).c_str(), std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (!file) throw HostError(path + L": cannot be read");
  return bytes;
}

void CopyFields(const std::string& source, const std::string& changed, std::ostream& file) {
  std::unordered_map<std::wstring, std::size_t> offsets;
  for (const DirectoryEntry& entry : DirectoryOf(source)) offsets.emplace(entry.path, entry.offset);
  constexpr std::size_t kFieldsSize = kEntryFirstSector - kEntryStateBits;
  for (const DirectoryEntry& entry : DirectoryOf(changed)) {
    const auto old = offsets.find(entry.path);
    if (old == offsets.end()) continue;
    file.seekp(static_cast<std::streamoff>(entry.offset + kEntryStateBits));
    file.write(source.data() + old->second + kEntryStateBits, kFieldsSize);
  }
}

}  // namespace

void KeepStateBitsAndTimes(const std::wstring& source, const std::wstring& changed,
                           const std::wstring& shown) {
  std::fstream file(SystemPath(changed).c_str(), std::ios::binary | std::ios::in | std::ios::out);
  try {
    CopyFields(BytesOfFile(source), BytesOfFile(changed), file);
  } catch (const std::out_of_range&) {
    throw HostError(shown + L": its directory of streams is damaged");
  }
  file.close();
  if (!file) throw HostError(shown + L": cannot write");
}

}  // namespace cad_host
