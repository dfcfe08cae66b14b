// Exchanges a component's file for a downloaded file of the same name.
#include "base/platform_codes.h"
#include "diagnostics/diagnostics.h"
#include "file_transfer.h"
#include "solidworks_add_in.h"

long CSolidWorksAddIn::SwapFile(const std::wstring& component_folder, const std::wstring& component_name,
                                const std::wstring& download_folder, const std::wstring& download_name,
                                const std::wstring& backup_folder) {
  namespace site = log_site::swap;
  const std::wstring current = component_folder + L"\\" + component_name;
  const std::wstring download = download_folder + L"\\" + download_name;
  const std::wstring backup = backup_folder + L"\\" + component_name;
  const std::wstring target = component_folder + L"\\" + download_name;

  if (Exists(current)) {
    if (const SystemError error = MoveOver(current, backup)) {
      LogSystemFailure(site::kMove, platform_code::kMoveToBackupFailed, *error,
                       TransferFailureText(current, backup));
      return platform_code::kMoveToBackupFailed;
    }
  }
  // From here on nothing is undone: if a step fails, the old file stays in the backup folder.
  if (const SystemError error = CheckExists(download)) {
    LogSystemFailure(site::kAttributes, platform_code::kDownloadMissing, *error);
    return platform_code::kDownloadMissing;
  }
  if (const SystemError error = CopyOver(download, target)) {
    LogSystemFailure(site::kCopy, platform_code::kCopyFailed, *error, TransferFailureText(download, target));
    return platform_code::kCopyFailed;
  }
  return S_OK;
}
