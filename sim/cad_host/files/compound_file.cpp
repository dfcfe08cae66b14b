#include "compound_file.h"

#include <windows.h>

#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/system_path.h"
#include "base/unique_handle.h"
#include "cad_host/host_error.h"
#include "compound_directory.h"

namespace cad_host {
namespace {

constexpr DWORD kReadMode = STGM_READ | STGM_SHARE_DENY_WRITE;
constexpr DWORD kWriteMode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr DWORD kChangeMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr DWORD kElementReadMode = STGM_READ | STGM_SHARE_EXCLUSIVE;

struct ViewCloser {
  void operator()(const void* view) const noexcept { UnmapViewOfFile(view); }
};

/// Wine reads on for ever in a file whose directory was cut off. A file that cannot be looked at is left to
/// the system, which says why.
void CheckDirectory(const std::wstring& path, const std::wstring& shown) {
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const UniqueHandle file = OwnHandle(
      CreateFileW(SystemPath(path).c_str(), GENERIC_READ, kSharing, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file) return;
  LARGE_INTEGER size{};
  GetFileSizeEx(file.get(), &size);
  const UniqueHandle mapping =
      OwnHandle(CreateFileMappingW(file.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
  if (!mapping) return;
  const std::unique_ptr<const void, ViewCloser> view(MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0));
  if (!view) return;
  try {
    DirectoryOf({static_cast<const char*>(view.get()), static_cast<std::size_t>(size.QuadPart)});
  } catch (const std::out_of_range&) {
    throw HostError(shown + L": its directory of streams is damaged");
  }
}

}  // namespace

CompoundFile::CompoundFile(std::wstring path, DWORD mode, HRESULT result, const IStoragePtr& storage)
    : m_path(std::move(path)), m_mode(mode), m_storage(storage) {
  Check(result, m_mode == kReadMode ? L"is not a document or cannot be read" : L"cannot write");
}

void CompoundFile::Check(HRESULT result, const wchar_t* step) const {
  if (FAILED(result)) throw HostError(m_path + L": " + step + L" (" + ResultText(result) + L")", result);
}

bool CompoundFile::IsOne(const std::wstring& path) { return StgIsStorageFile(path.c_str()) == S_OK; }

CompoundFile CompoundFile::Create(const std::wstring& path, const std::wstring& shown) {
  IStoragePtr storage;
  const HRESULT result = StgCreateStorageEx(path.c_str(), kWriteMode, STGFMT_STORAGE, 0, nullptr, nullptr,
                                            IID_PPV_ARGS(&storage));
  return {shown, kWriteMode, result, storage};
}

CompoundFile CompoundFile::OpenToRead(const std::wstring& path) {
  CheckDirectory(path, path);
  IStoragePtr storage;
  const HRESULT result =
      StgOpenStorageEx(path.c_str(), kReadMode, STGFMT_STORAGE, 0, nullptr, nullptr, IID_PPV_ARGS(&storage));
  return {path, kReadMode, result, storage};
}

CompoundFile CompoundFile::OpenToChange(const std::wstring& path, const std::wstring& shown) {
  CheckDirectory(path, shown);
  IStoragePtr storage;
  const HRESULT result = StgOpenStorageEx(path.c_str(), kChangeMode, STGFMT_STORAGE, 0, nullptr, nullptr,
                                          IID_PPV_ARGS(&storage));
  return {shown, kChangeMode, result, storage};
}

bool CompoundFile::Has(const wchar_t* name) const {
  IStreamPtr stream;
  if (SUCCEEDED(m_storage->OpenStream(name, nullptr, kElementReadMode, 0, &stream))) return true;
  IStoragePtr storage;
  return SUCCEEDED(m_storage->OpenStorage(name, nullptr, kElementReadMode, nullptr, 0, &storage));
}

Records CompoundFile::ReadTable(const wchar_t* name) const { return DecodeRecords(ReadStream(name)); }

std::string CompoundFile::ReadStream(const wchar_t* name) const {
  IStreamPtr stream;
  const HRESULT opened = m_storage->OpenStream(name, nullptr, kElementReadMode, 0, &stream);
  if (opened == STG_E_FILENOTFOUND) return {};
  Check(opened, name);
  STATSTG description{};
  Check(stream->Stat(&description, STATFLAG_NONAME), name);
  std::string bytes(description.cbSize.LowPart, '\0');
  ULONG read = 0;
  Check(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read), name);
  if (read != bytes.size()) Check(STG_E_READFAULT, name);
  return bytes;
}

void CompoundFile::WriteTable(const wchar_t* name, const Records& records) const {
  WriteStream(name, EncodeRecords(records));
}

void CompoundFile::WriteStream(const wchar_t* name, std::string_view bytes) const {
  IStreamPtr stream;
  // An existing stream keeps its place in the directory: a new one makes Wine write its neighbours' entries
  // anew.
  HRESULT opened = m_storage->OpenStream(name, nullptr, kChangeMode, 0, &stream);
  if (opened == STG_E_FILENOTFOUND) opened = m_storage->CreateStream(name, kWriteMode, 0, 0, &stream);
  Check(opened, name);
  ULARGE_INTEGER size{};
  size.QuadPart = bytes.size();
  Check(stream->SetSize(size), name);
  ULONG written = 0;
  Check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), name);
  if (written != bytes.size()) Check(STG_E_WRITEFAULT, name);
}

}  // namespace cad_host
