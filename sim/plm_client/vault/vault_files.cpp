#include "vault_files.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <system_error>

#include "base/system_text.h"
#include "vault/vault_error.h"

namespace plm_vault {
namespace {

[[noreturn]] void Fail(const std::filesystem::path& file, DWORD code) {
  throw VaultError(file.wstring() + L": " + SystemText(code));
}

/// A copy that is not whole yet; it goes unless it gets its name.
class UnfinishedCopy {
 public:
  explicit UnfinishedCopy(const std::filesystem::path& file) : m_path(file) {
    m_path += L"." + std::to_wstring(GetCurrentProcessId()) + L".new";
  }
  UnfinishedCopy(const UnfinishedCopy&) = delete;
  UnfinishedCopy& operator=(const UnfinishedCopy&) = delete;
  ~UnfinishedCopy() { DeleteFileW(m_path.c_str()); }

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace

bool FileExists(const std::filesystem::path& file) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

void MakeFolders(const std::filesystem::path& folder) {
  std::error_code failure;
  std::filesystem::create_directories(folder, failure);
  if (failure) Fail(folder, static_cast<DWORD>(failure.value()));
}

void CopyWhole(const std::filesystem::path& from, const std::filesystem::path& to) {
  MakeFolders(to.parent_path());
  const UnfinishedCopy copy(to);
  if (!CopyFileW(from.c_str(), copy.Path().c_str(), FALSE)) Fail(from, GetLastError());
  SetFileAttributesW(copy.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
  if (!MoveFileExW(copy.Path().c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) Fail(to, GetLastError());
}

bool SameBytes(const std::filesystem::path& a, const std::filesystem::path& b) {
  constexpr std::size_t kChunkBytes = 64 * 1024;
  std::ifstream first(a, std::ios::binary);
  std::ifstream second(b, std::ios::binary);
  if (!first || !second) return false;
  std::array<char, kChunkBytes> first_chunk, second_chunk;
  do {
    first.read(first_chunk.data(), first_chunk.size());
    second.read(second_chunk.data(), second_chunk.size());
    if (first.gcount() != second.gcount()) return false;
    if (!std::equal(first_chunk.begin(), first_chunk.begin() + first.gcount(), second_chunk.begin()))
      return false;
  } while (first && second);
  return first.eof() && second.eof();
}

}  // namespace plm_vault
