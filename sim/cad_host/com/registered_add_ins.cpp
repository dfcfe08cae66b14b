// The add-ins in the registry and the creation of their objects.
#include "add_ins.h"
#include "base/unique_registry_key.h"
#include "cad_host/host_error.h"

namespace cad_host {
namespace {

constexpr const wchar_t* kAddInsKey = L"SOFTWARE\\SolidWorks\\AddIns";
constexpr REGSAM kReadAccess = KEY_READ | KEY_WOW64_64KEY;

UniqueRegistryKey OpenKey(HKEY parent, const wchar_t* name) {
  HKEY key = nullptr;
  return UniqueRegistryKey(RegOpenKeyExW(parent, name, 0, kReadAccess, &key) == ERROR_SUCCESS ? key
                                                                                              : nullptr);
}

std::wstring ReadText(HKEY key, const wchar_t* name) {
  wchar_t text[1024] = {};
  DWORD size = sizeof text;
  const LSTATUS status = RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? text : L"";
}

AddInEntry ReadEntry(HKEY parent, const wchar_t* clsid) {
  const UniqueRegistryKey key = OpenKey(parent, clsid);
  AddInEntry entry{.clsid = clsid,
                   .title = ReadText(key.get(), L"Title"),
                   .description = ReadText(key.get(), L"Description")};
  DWORD at_start = 0;
  DWORD size = sizeof at_start;
  RegGetValueW(key.get(), nullptr, nullptr, RRF_RT_REG_DWORD, nullptr, &at_start, &size);
  entry.loads_at_start = at_start != 0;
  return entry;
}

}  // namespace

std::vector<AddInEntry> AddIns::Registered() {
  std::vector<AddInEntry> entries;
  const UniqueRegistryKey key = OpenKey(HKEY_LOCAL_MACHINE, kAddInsKey);
  if (!key) return entries;
  wchar_t name[64] = {};
  DWORD length = std::size(name);
  for (DWORD index = 0;
       RegEnumKeyExW(key.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       ++index, length = std::size(name)) {
    entries.push_back(ReadEntry(key.get(), name));
  }
  return entries;
}

ISwAddinPtr AddIns::Load(const AddInEntry& entry) {
  const std::wstring who = entry.title + L" " + entry.clsid;
  CLSID clsid{};
  HRESULT result = CLSIDFromString(entry.clsid.c_str(), &clsid);
  if (FAILED(result)) throw HostError(who + L": not a class id (" + ResultText(result) + L")", result);
  ISwAddinPtr object;
  result = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(ISwAddin),
                            reinterpret_cast<void**>(&object));
  if (FAILED(result)) throw HostError(who + L": cannot be created (" + ResultText(result) + L")", result);
  return object;
}

}  // namespace cad_host
