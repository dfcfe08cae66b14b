#include "module_services.h"

#include <windows.h>

#include <atomic>

#include "CZALCADPathHelper.h"

using TextSource = CZALCmdInvoker::TextSource;
using LockFunction = CZALCmdInvoker::LockFunction;

namespace {

std::wstring EnglishFirstLine() { return L"The PLM client did not answer."; }
std::wstring PlatformName() { return L"TAVO"; }
void KeepNothing() noexcept {}

constinit std::atomic<TextSource> first_line_source = EnglishFirstLine;
constinit std::atomic<TextSource> caption_source = PlatformName;
constinit std::atomic<LockFunction> lock_module = KeepNothing;
constinit std::atomic<LockFunction> unlock_module = KeepNothing;

std::wstring BoxText(const std::wstring& reason) {
  std::wstring text = first_line_source.load()() + L"\n\n" + reason;
  std::wstring log_folder;
  CZALCADPathHelper::GetCADCfgLogPath(log_folder);
  if (!log_folder.empty()) text += L"\nLog folder: " + log_folder;
  return text;
}

}  // namespace

void CZALCmdInvoker::SetBoxTexts(TextSource first_line, TextSource caption) noexcept {
  first_line_source = first_line ? first_line : EnglishFirstLine;
  caption_source = caption ? caption : PlatformName;
}

void CZALCmdInvoker::SetModuleLock(LockFunction lock, LockFunction unlock) noexcept {
  lock_module = lock ? lock : KeepNothing;
  unlock_module = unlock ? unlock : KeepNothing;
}

namespace invoker {

void ShowClientNotReached(const std::wstring& reason) noexcept {
  try {
    // The box has no owner, so only MB_TASKMODAL keeps the user from working in the host while it is shown.
    MessageBoxW(nullptr, BoxText(reason).c_str(), caption_source.load()().c_str(),
                MB_OK | MB_ICONWARNING | MB_TASKMODAL);
  } catch (...) {  // the log already has the reason
  }
}

ModuleLock::ModuleLock() noexcept : m_unlock(unlock_module) { lock_module.load()(); }

ModuleLock::~ModuleLock() { m_unlock(); }

}  // namespace invoker
