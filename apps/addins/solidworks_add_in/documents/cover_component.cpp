// Replaces the selected component's file. If the download has a different name, it is copied next to the
// component's file and the host replaces the component with that copy. If both have the same name, the file
// itself is exchanged.
#include <shlwapi.h>

#include "CFileHelper.h"
#include "CFilePathHelper.h"
#include "CStringHelper.h"
#include "base/com_pointers.h"
#include "base/platform_codes.h"
#include "base/system_path.h"
#include "file_transfer.h"
#include "host/constants.h"
#include "host/selection.h"
#include "replacement.h"
#include "resources/resource_ids.h"
#include "selection_point.h"
#include "solidworks_add_in.h"

namespace {

namespace site = log_site::cover;

/// A path split into folder and file name.
struct FilePath {
  std::wstring folder;
  std::wstring name;

  explicit FilePath(const std::wstring& path) { CFilePathHelper::SplitFilePath(path, folder, name); }
};

/// The selected component; null, after a message box and a log line, if no component is selected.
IComponent2Ptr GetSelectedComponent(const IModelDoc2Ptr& document) {
  ISelectionMgrPtr selection;
  HRESULT result = document->get_ISelectionManager(&selection);
  if (FAILED(result)) return FailReplacement(site::kSelectionManager, result), IComponent2Ptr();
  IDispatchPtr selected;
  result = selection->GetSelectedObject6(kFirstSelection, kAnyMark, &selected);
  if (FAILED(result) || !selected) return FailReplacement(site::kSelectedObject, result), IComponent2Ptr();
  IComponent2Ptr component;
  result = selected->QueryInterface(IID_PPV_ARGS(&component));
  if (FAILED(result) || !component) return FailReplacement(site::kComponent, result), IComponent2Ptr();
  return component;
}

/// Reads the path of the component's file. An empty path counts as a failure: its folder would be the root of
/// the current drive.
bool GetComponentPath(const IComponent2Ptr& component, std::wstring& path) {
  CComBSTR name;
  const HRESULT result = component->GetPathName(&name);
  if (FAILED(result)) return FailReplacement(site::kComponentPath, result);
  path = CStringHelper::CComBSTR2WString(name);
  return !path.empty() || FailReplacement(site::kComponentPath, S_OK);
}

/// Creates the backup folder if it is missing. A failure is only logged.
bool MakeBackupFolder(const std::wstring& folder) {
  if (PathIsDirectoryW(SystemPath(folder).c_str())) return true;
  try {
    if (CFileHelper::CreateFolder(folder, false)) return true;
    LogFailure(site::kBackupFolderNotMade, platform_code::kBackupFolderNotMade, folder);
  } catch (...) {  // a different implementation of CFileHelper may throw
    LogFailure(site::kBackupFolderInvalid, platform_code::kBackupFolderInvalid, folder + L"  is not valid");
  }
  return false;
}

}  // namespace

bool CSolidWorksAddIn::ReplaceCurrentFileByCovering(const std::wstring& download_path) {
  const ActiveAssembly active =
      GetActiveAssembly(iSwApp, {site::kActiveDocument, site::kNoAssemblyType, site::kAssembly});
  if (!active) return false;
  const IComponent2Ptr component = GetSelectedComponent(active.document);
  if (!component) return false;
  std::wstring component_path;
  if (!GetComponentPath(component, component_path)) return false;

  const FilePath current(component_path);
  const FilePath download(download_path);
  const std::wstring backup_folder = download.folder + L"\\temp";
  if (!MakeBackupFolder(backup_folder)) return true;
  if (CStringHelper::StringCompare(current.name, download.name, false) != 0) {
    return ReplaceByCopy(active.assembly, download_path, current.folder + L"\\" + download.name);
  }

  long changed = 0;
  HRESULT result = component->SetSuppression2(swComponentSuppressed, &changed);
  if (FAILED(result)) return FailReplacement(site::kSuppress, result);
  result = SwapFile(current.folder, current.name, download.folder, download.name, backup_folder);
  if (FAILED(result)) {
    // The component stays suppressed: resolving it would load a file that may be missing.
    return FailReplacement(site::kSwap, result, component_path + L", download file: " + download_path);
  }
  result = component->SetSuppression2(swComponentResolved, &changed);
  return SUCCEEDED(result) || FailReplacement(site::kResolve, result);
}

/// Copies the download to `target`, next to the component's file, and makes the host replace the component
/// with that copy.
bool CSolidWorksAddIn::ReplaceByCopy(const IAssemblyDocPtr& assembly, const std::wstring& download_path,
                                     const std::wstring& target) {
  IDispatchPtr open;
  const HRESULT result = iSwApp->GetOpenDocumentByName(CStringHelper::String2CComBSTR(target), &open);
  if (SUCCEEDED(result) && open) {
    ShowMessage(IDS_FILE_IS_OPENING);
    return false;
  }
  const FilePath download(download_path);
  const std::wstring source = download.folder + L"\\" + download.name;
  if (const SystemError error = CopyOver(source, target)) {
    ShowMessage(IDS_REPLACEMENT_FAILED);
    LogSystemFailure(site::kCopy, platform_code::kCopyFailed, *error, TransferFailureText(source, target));
    return false;
  }
  return ReplaceSelectedComponent(iSwApp, m_hostMajorVersion, assembly, target, download_path,
                                  site::kReplace);
}
