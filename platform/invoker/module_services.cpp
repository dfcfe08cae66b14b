#include "module_services.h"

#include <windows.h>

#include <atomic>

#include "CZALCADPathHelper.h"

using BoxTexts = CZALCmdInvoker::BoxTexts;
using LockFunction = CZALCmdInvoker::LockFunction;

namespace {

BoxTexts NoTexts() { return {}; }
void KeepNothing() noexcept {}

constinit std::atomic<CZALCmdInvoker::BoxTextSource> text_source = NoTexts;
constinit std::atomic<LockFunction> lock_module = KeepNothing;
constinit std::atomic<LockFunction> unlock_module = KeepNothing;

BoxTexts CurrentTexts() {
  BoxTexts texts = text_source.load()();
  if (texts.first_line.empty()) texts.first_line = L"The PLM client did not answer.";
  if (texts.log_folder.empty()) texts.log_folder = L"Log folder:";
  if (texts.caption.empty()) texts.caption = L"TAVO";
  return texts;
}

std::wstring FullText(const BoxTexts& texts, const std::wstring& reason) {
  std::wstring text = texts.first_line + L"\n\n" + reason;
  std::wstring log_folder;
  CZALCADPathHelper::GetCADCfgLogPath(log_folder);
  if (!log_folder.empty()) text += L"\n" + texts.log_folder + L" " + log_folder;
  return text;
}

}  // namespace

void CZALCmdInvoker::SetBoxTexts(BoxTextSource source) noexcept { text_source = source ? source : NoTexts; }

void CZALCmdInvoker::SetModuleLock(LockFunction lock, LockFunction unlock) noexcept {
  lock_module = lock ? lock : KeepNothing;
  unlock_module = unlock ? unlock : KeepNothing;
}

namespace invoker {

void ShowClientNotReached(const std::wstring& reason) noexcept {
  try {
    const BoxTexts texts = CurrentTexts();
    // The box has no owner, so only MB_TASKMODAL keeps the user from working in the host while it is shown.
    MessageBoxW(nullptr, FullText(texts, reason).c_str(), texts.caption.c_str(),
                MB_OK | MB_ICONWARNING | MB_TASKMODAL);
  } catch (...) {  // the log already has the reason
  }
}

ModuleLock::ModuleLock() noexcept : m_unlock(unlock_module) { lock_module.load()(); }

ModuleLock::~ModuleLock() { m_unlock(); }

}  // namespace invoker
