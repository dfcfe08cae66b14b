#include "CDisplayErrorMsg.h"

#include <windows.h>

#include <atomic>

#include "CZALCADPathHelper.h"
#include "base/hex_code.h"

namespace {
std::wstring PlatformName() { return L"TAVO"; }

constinit std::atomic<CDisplayErrorMsg::CaptionSource> caption_source = PlatformName;

CDisplayErrorMsg::Labels NoLabels() { return {}; }

constinit std::atomic<CDisplayErrorMsg::LabelSource> label_source = NoLabels;

CDisplayErrorMsg::Labels CurrentLabels() {
  CDisplayErrorMsg::Labels labels = label_source.load()();
  if (labels.error_code.empty()) labels.error_code = L"Error code:";
  if (labels.log_folder.empty()) labels.log_folder = L"Log folder:";
  return labels;
}

std::wstring BoxText(const ZALErrorMsg& message) {
  const CDisplayErrorMsg::Labels labels = CurrentLabels();
  std::wstring text = message.text + L"\n\n" + labels.error_code + L" " + HexCode(message.code);
  std::wstring log_folder;
  CZALCADPathHelper::GetCADCfgLogPath(log_folder);
  if (!log_folder.empty()) text += L"\n" + labels.log_folder + L" " + log_folder;
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

void CDisplayErrorMsg::SetLabelSource(LabelSource source) noexcept {
  label_source = source ? source : NoLabels;
}
