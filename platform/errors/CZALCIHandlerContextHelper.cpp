#include "CZALCIHandlerContextHelper.h"

#include <windows.h>

#include "base/hex_code.h"
#include "base/platform_codes.h"
#include "base/system_text.h"

namespace {
struct PlatformText {
  long code;
  const wchar_t* text;
};

constexpr PlatformText kPlatformTexts[] = {
    {platform_code::kDownloadMissing, L"The downloaded file was not found."},
    {platform_code::kCopyFailed, L"The file could not be copied."},
    {platform_code::kMoveToBackupFailed, L"The file could not be moved to the backup folder."},
    {platform_code::kBackupFolderNotMade, L"The backup folder could not be made."},
    {platform_code::kJsonMemberMissing, L"An expected entry is missing in the data."},
    {platform_code::kJsonWrongType, L"The data is malformed, or an entry is not of the expected type."},
    {platform_code::kNoAnswer, L"The PLM client gave no answer."},
    {platform_code::kBackupFolderInvalid, L"The path of the backup folder is not valid."},
};

// Empty if `code` is not one of the platform's codes.
std::wstring PlatformTextFor(long code) {
  for (const PlatformText& entry : kPlatformTexts) {
    if (entry.code == code) return entry.text;
  }
  return {};
}

}  // namespace

CZALCIHandlerContextHelper& CZALCIHandlerContextHelper::Instance() {
  static CZALCIHandlerContextHelper instance;
  return instance;
}

ZALErrorMsg CZALCIHandlerContextHelper::GetErrorMsg(long code) const {
  std::wstring text = PlatformTextFor(code);
  if (text.empty()) text = SystemText(static_cast<DWORD>(code));
  if (text.empty()) text = L"Unknown error " + HexCode(code) + L".";
  return {code, text};
}
