#include "CZALCADPathHelper.h"

#include <windows.h>

#include "CFileHelper.h"
#include "CFilePathHelper.h"
#include "base/module_path.h"
#include "configuration/places.h"

namespace {
// The configuration folder's name, chosen once for the process.
std::wstring& ChosenName() {
  static std::wstring name;
  return name;
}

// The folder of the module that this code is linked into; empty if the system does not know it.
std::wstring ModuleFolder() {
  const HMODULE module = OwnModule();
  std::wstring folder, name;
  if (module) CFilePathHelper::SplitFilePath(ModulePath(module), folder, name);
  return folder;
}

constexpr long kNoRoot = static_cast<long>(0x80070003);         // ERROR_PATH_NOT_FOUND
constexpr long kFolderNotMade = static_cast<long>(0x80070052);  // ERROR_CANNOT_MAKE
}  // namespace

long CZALCADPathHelper::InitCADCfgPath(const std::wstring& name) {
  ChosenName() = name;
  return PlatformFolder().empty() ? kNoRoot : S_OK;
}

long CZALCADPathHelper::GetCADCfgPath(const std::wstring& name, const std::wstring& file,
                                      std::wstring& path) {
  const bool has_root = !PlatformFolder().empty();
  const std::vector<std::wstring> places =
      ConfigurationPlaces(name.empty() ? ChosenName() : name, file, ModuleFolder());
  path = FirstFile(places);
  if (path.empty() && has_root) path = places.front();
  return has_root ? S_OK : kNoRoot;
}

long CZALCADPathHelper::GetCADCfgLogPath(std::wstring& path) {
  path = LogFolder();
  if (path.empty()) return kNoRoot;
  return CFileHelper::CreateFolder(path, false) ? S_OK : kFolderNotMade;
}
