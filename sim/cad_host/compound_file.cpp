#include "compound_file.h"

#include <utility>

#include "cad_host/host_error.h"

namespace cad_host {
namespace {

constexpr DWORD kReadMode = STGM_READ | STGM_SHARE_DENY_WRITE;
constexpr DWORD kWriteMode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr DWORD kElementReadMode = STGM_READ | STGM_SHARE_EXCLUSIVE;

constexpr DWORD kChangeMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr ULONGLONG kAlignment = 4;  // of values in a property set

}  // namespace

CompoundFile::CompoundFile(std::wstring path, DWORD mode, HRESULT result, const IStoragePtr& storage)
    : m_path(std::move(path)), m_mode(mode), m_storage(storage) {
  Check(result, m_mode == kWriteMode ? L"cannot write" : L"is no document or cannot be read");
}

void CompoundFile::Check(HRESULT result, const wchar_t* step) const {
  if (FAILED(result)) throw HostError(m_path + L": " + step + L" (" + ResultText(result) + L")", result);
}

bool CompoundFile::IsOne(const std::wstring& path) { return StgIsStorageFile(path.c_str()) == S_OK; }

CompoundFile CompoundFile::Create(const std::wstring& path) {
  IStoragePtr storage;
  const HRESULT result = StgCreateStorageEx(path.c_str(), kWriteMode, STGFMT_STORAGE, 0, nullptr, nullptr,
                                            IID_PPV_ARGS(&storage));
  return {path, kWriteMode, result, storage};
}

CompoundFile CompoundFile::OpenToRead(const std::wstring& path) {
  IStoragePtr storage;
  const HRESULT result =
      StgOpenStorageEx(path.c_str(), kReadMode, STGFMT_STORAGE, 0, nullptr, nullptr, IID_PPV_ARGS(&storage));
  return {path, kReadMode, result, storage};
}

Records CompoundFile::ReadTable(const wchar_t* name) const { return DecodeRecords(ReadStream(name)); }

std::string CompoundFile::ReadStream(const wchar_t* name) const {
  IStreamPtr stream;
  if (FAILED(m_storage->OpenStream(name, nullptr, kElementReadMode, 0, &stream))) return {};
  STATSTG description{};
  Check(stream->Stat(&description, STATFLAG_NONAME), name);
  std::string bytes(description.cbSize.LowPart, '\0');
  Check(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), name);
  return bytes;
}

void CompoundFile::WriteTable(const wchar_t* name, const Records& records) const {
  const std::string bytes = EncodeRecords(records);
  IStreamPtr stream;
  Check(m_storage->CreateStream(name, kWriteMode, 0, 0, &stream), name);
  Check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), name);
}

IPropertyStoragePtr CompoundFile::CreateProperties() const {
  IPropertySetStoragePtr sets(m_storage);
  IPropertyStoragePtr properties;
  Check(sets->Create(kUserDefinedProperties, nullptr, PROPSETFLAG_ANSI, kWriteMode, &properties),
        L"custom properties");
  PROPSPEC code_page{};
  code_page.ulKind = PRSPEC_PROPID;
  code_page.propid = PID_CODEPAGE;
  PROPVARIANT utf8{};
  utf8.vt = VT_I2;
  utf8.iVal = static_cast<SHORT>(CP_UTF8);
  Check(properties->WriteMultiple(1, &code_page, &utf8, PID_FIRST_USABLE), L"custom properties");
  return properties;
}

void CompoundFile::CompleteProperties() const {
  IStreamPtr stream;
  Check(m_storage->OpenStream(kPropertiesStream, nullptr, kChangeMode, 0, &stream), L"custom properties");
  STATSTG description{};
  Check(stream->Stat(&description, STATFLAG_NONAME), L"custom properties");
  ULARGE_INTEGER size = description.cbSize;
  size.QuadPart = (size.QuadPart + kAlignment - 1) / kAlignment * kAlignment;
  Check(stream->SetSize(size), L"custom properties");
}

}  // namespace cad_host
