#include "type_library.h"

#include <cstring>
#include <fstream>

#include "argument.h"
#include "base/com_pointers.h"
#include "base/file_attributes.h"
#include "cad_host/host_error.h"
#include "files/paths.h"
#include "host/application_events.h"

// The bytes of the type library, linked into the program so that it needs no other file.
asm(".section .rdata,\"dr\"\n"
    ".global cad_host_type_library\n"
    "cad_host_type_library: .incbin \"" CAD_HOST_TYPE_LIBRARY
    "\"\n"
    ".global cad_host_type_library_end\n"
    "cad_host_type_library_end:\n"
    ".text\n");
extern "C" const char cad_host_type_library[];
extern "C" const char cad_host_type_library_end[];

namespace cad_host {
namespace {

constexpr WORD kMinorVersion = 0;

// The offset of the major version in the header of a type library file, a 16-bit number.
constexpr std::size_t kMajorVersionOffset = 0x18;

constexpr const wchar_t* kFileStem = L"cad_host_";

std::wstring TypeLibraryPath(WORD major) {
  wchar_t folder[MAX_PATH + 1] = {};
  GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
  return folder +
         (kFileStem + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(major) + L".tlb");
}

bool WriteTypeLibrary(const std::wstring& path, WORD major) {
  std::string bytes(cad_host_type_library, cad_host_type_library_end);
  std::memcpy(&bytes[kMajorVersionOffset], &major, sizeof major);
  std::ofstream file(path.c_str(), std::ios::binary);
  file << bytes;
  file.close();
  return !file.fail();
}

std::wstring RegisteredPath(WORD major) {
  BSTR path = nullptr;
  QueryPathOfRegTypeLib(host::kTypeLibraryId, major, kMinorVersion, LOCALE_NEUTRAL, &path);
  std::wstring text = Text(path);
  SysFreeString(path);
  return text;
}

bool IsRegistered(WORD major) {
  const std::wstring path = RegisteredPath(major);
  // A running host keeps its file open; a file that can be deleted was left behind by a crash.
  if (FileNameOf(path).starts_with(kFileStem)) DeleteFileW(path.c_str());
  return IsFile(path);
}

}  // namespace

TypeLibraryRegistration::TypeLibraryRegistration(WORD major) : m_major(major) {
  if (IsRegistered(major)) return;
  const std::wstring path = TypeLibraryPath(major);
  if (!WriteTypeLibrary(path, major)) throw HostError(L"cannot write the host's type library: " + path);
  ITypeLibPtr library;
  HRESULT result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library);
  if (SUCCEEDED(result)) result = RegisterTypeLib(library, const_cast<wchar_t*>(path.c_str()), nullptr);
  if (FAILED(result)) {
    DeleteFileW(path.c_str());
    throw HostError(L"cannot register the host's type library " + path + L": " + ResultText(result), result);
  }
  m_path = path;
  m_hold = std::make_unique<FileHold>(path);
}

TypeLibraryRegistration::~TypeLibraryRegistration() {
  if (m_path.empty()) return;
  UnRegisterTypeLib(host::kTypeLibraryId, m_major, kMinorVersion, LOCALE_NEUTRAL, SYS_WIN64);
  m_hold.reset();
  DeleteFileW(m_path.c_str());
}

}  // namespace cad_host
