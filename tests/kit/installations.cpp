#include "installations.h"

#include <windows.h>

#include <algorithm>

#include "base/unique_registry_key.h"
#include "solidworks_add_in_h.h"

namespace {

std::wstring Text(REFGUID id) {
  wchar_t text[39];
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

/// Below HKEY_LOCAL_MACHINE, where the system looks for classes that count for all users.
std::vector<std::wstring> Keys() {
  const std::wstring classes = L"SOFTWARE\\Classes\\";
  return {L"SOFTWARE\\SolidWorks",
          classes + L"CLSID\\" + Text(CLSID_SwAddin),
          classes + L"CLSID\\" + Text(CLSID_BitmapHandler),
          classes + L"TypeLib\\" + Text(LIBID_SolidWorksAddInLib),
          classes + L"AppID\\" + Text(APPID_SolidWorksAddIn),
          classes + L"AppID\\solidworks_add_in.DLL",
          classes + L"solidworks_add_in.SwAddin",
          classes + L"solidworks_add_in.SwAddin.1",
          classes + L"solidworks_add_in.BitmapHandler",
          classes + L"solidworks_add_in.BitmapHandler.1"};
}

bool Exists(const std::wstring& path) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &key);
  const UniqueRegistryKey owner(key);
  return status == ERROR_SUCCESS;
}

}  // namespace

std::vector<std::wstring> FoundInstallations() {
  std::vector<std::wstring> found = Keys();
  std::erase_if(found, [](const std::wstring& path) { return !Exists(path); });
  for (std::wstring& path : found) path.insert(0, L"HKEY_LOCAL_MACHINE\\");
  return found;
}

void RemoveLeftovers() {
  for (const std::wstring& path : Keys()) RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str());
}
