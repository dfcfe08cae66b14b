#include "CZALCADPathHelper.h"

#include <windows.h>

#include "CFileHelper.h"
#include "CFilePathHelper.h"
#include "base/file_attributes.h"
#include "base/module_path.h"

namespace {
// The configuration folder's name, chosen once for the process.
std::wstring& ChosenName() {
  static std::wstring name;
  return name;
}

// The variable's value; empty if it is not set. Does not use the C runtime, which copied the environment when
// the process started.
std::wstring EnvironmentVariable(const wchar_t* name) {
  std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

// Without a separator at its end; empty if there is no root folder.
std::wstring RootFolder() {
  std::wstring root = EnvironmentVariable(L"TAVO_HOME");
  if (root.empty()) {
    root = EnvironmentVariable(L"APPDATA");
    if (!root.empty()) root += L"\\TAVO";
  }
  while (root.ends_with(L'\\') || root.ends_with(L'/')) root.pop_back();
  return root;
}

// The folder of the module that this code is linked into; empty if the system does not know it.
std::wstring ModuleFolder() {
  const HMODULE module = OwnModule();
  std::wstring folder, name;
  if (module) CFilePathHelper::SplitFilePath(ModulePath(module), folder, name);
  return folder;
}

// `place` in the administrator's folder; empty if the system does not say where that is.
std::wstring AdministratorsPath(const std::wstring& place) {
  const std::wstring folder = EnvironmentVariable(L"PROGRAMDATA");
  return folder.empty() ? folder : folder + L"\\TAVO" + place;
}

// The default that is installed beside the module; empty if its folder is not known.
std::wstring InstalledPath(const std::wstring& file) {
  const std::wstring folder = ModuleFolder();
  return folder.empty() ? folder : folder + L"\\config\\" + file;
}

constexpr long kNoRoot = static_cast<long>(0x80070003);         // ERROR_PATH_NOT_FOUND
constexpr long kFolderNotMade = static_cast<long>(0x80070052);  // ERROR_CANNOT_MAKE
}  // namespace

long CZALCADPathHelper::InitCADCfgPath(const std::wstring& name) {
  ChosenName() = name;
  return RootFolder().empty() ? kNoRoot : S_OK;
}

long CZALCADPathHelper::GetCADCfgPath(const std::wstring& name, const std::wstring& file,
                                      std::wstring& path) {
  const std::wstring root = RootFolder();
  const std::wstring place = L"\\config\\" + (name.empty() ? ChosenName() : name) + L"\\" + file;
  const std::wstring own = root.empty() ? root : root + place;
  path = own;
  for (const std::wstring& candidate : {own, AdministratorsPath(place), InstalledPath(file)}) {
    if (!IsFile(candidate)) continue;
    path = candidate;
    break;
  }
  return root.empty() ? kNoRoot : S_OK;
}

long CZALCADPathHelper::GetCADCfgLogPath(std::wstring& path) {
  const std::wstring root = RootFolder();
  path.clear();
  if (root.empty()) return kNoRoot;
  path = root + L"\\log";
  return CFileHelper::CreateFolder(path, false) ? S_OK : kFolderNotMade;
}
