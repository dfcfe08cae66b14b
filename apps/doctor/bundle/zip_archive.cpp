#include "zip_archive.h"

#include <windows.h>

#include <minizip/zip.h>
// After zip.h, which it needs.
#include <minizip/iowin32.h>

#include <utility>

#include "base/file_attributes.h"
#include "base/system_path.h"

namespace doctor {
namespace {

// Bit 11 of the general flags: names are in UTF-8.
constexpr uLong kUtf8Names = 1 << 11;
constexpr uLong kMadeBy = 20;  // version 2.0, on a system whose attributes are those of this one

zip_fileinfo NowAsFileInfo() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  zip_fileinfo info{};
  info.tmz_date = {now.wSecond, now.wMinute, now.wHour, now.wDay, now.wMonth - 1, now.wYear};
  return info;
}

}  // namespace

ZipArchive::ZipArchive(const std::wstring& path) : m_path(FullPath(path)) {
  if (FileAttributes(m_path) != INVALID_FILE_ATTRIBUTES) {
    throw BundleError{L"the archive " + m_path + L" exists already"};
  }
  zlib_filefunc64_def functions{};
  fill_win32_filefunc64W(&functions);
  m_archive = zipOpen2_64(SystemPath(m_path).c_str(), APPEND_STATUS_CREATE, nullptr, &functions);
  if (!m_archive) Fail();
}

ZipArchive::~ZipArchive() {
  if (!m_archive) return;
  zipClose(m_archive, nullptr);
  DeleteFileW(SystemPath(m_path).c_str());
}

void ZipArchive::Add(const std::string& name, const std::string& bytes) {
  const zip_fileinfo info = NowAsFileInfo();
  const bool added =
      zipOpenNewFileInZip4_64(m_archive, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                              Z_DEFAULT_COMPRESSION, 0, -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY,
                              nullptr, 0, kMadeBy, kUtf8Names, 0) == ZIP_OK &&
      zipWriteInFileInZip(m_archive, bytes.data(), static_cast<unsigned>(bytes.size())) == ZIP_OK &&
      zipCloseFileInZip(m_archive) == ZIP_OK;
  if (!added) Fail();
}

void ZipArchive::Close() {
  if (zipClose(std::exchange(m_archive, nullptr), nullptr) == ZIP_OK) return;
  DeleteFileW(SystemPath(m_path).c_str());
  Fail();
}

void ZipArchive::Fail() const { throw BundleError{L"the archive " + m_path + L" cannot be written"}; }

}  // namespace doctor
