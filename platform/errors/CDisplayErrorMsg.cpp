#include "CDisplayErrorMsg.h"

#include <windows.h>

#include <atomic>

#include "CZALCADPathHelper.h"
#include "base/hex_code.h"

namespace {
std::wstring PlatformName() { return L"TAVO"; }

constinit std::atomic<CDisplayErrorMsg::CaptionSource> caption_source = PlatformName;

std::wstring BoxText(const ZALErrorMsg& message) {
  std::wstring text = message.text + L"\n\nError code: " + HexCode(message.code);
  std::wstring log_folder;
  CZALCADPathHelper::GetCADCfgLogPath(log_folder);
  if (!log_folder.empty()) text += L"\nLog folder: " + log_folder;
  return text;
}
}  // namespace

long CDisplayErrorMsg::Display(const ZALErrorMsg& message, unsigned style) {
  if (SUCCEEDED(message.code)) return 0;
  // The box has no owner, so only this flag keeps the user from working in the host while it is shown.
  return MessageBoxW(nullptr, BoxText(message).c_str(), caption_source.load()().c_str(),
                     style | MB_TASKMODAL);
}

void CDisplayErrorMsg::SetCaptionSource(CaptionSource source) noexcept {
  caption_source = source ? source : PlatformName;
}
