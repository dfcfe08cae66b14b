#include "application.h"

#include "com_module.h"
#include "module_state.h"
#include "resources/resource_ids.h"
#include "string_table.h"

CSolidWorksAddInApp& CSolidWorksAddInApp::Instance() noexcept {
  static CSolidWorksAddInApp application;
  return application;
}

bool CSolidWorksAddInApp::InitInstance() noexcept { return ModuleState::Initialize(); }

void CSolidWorksAddInApp::ExitInstance() noexcept { ModuleState::Terminate(); }

std::wstring CSolidWorksAddInApp::Title() const {
  return LoadResourceString(CSolidWorksAddInModule::Instance().ModuleHandle(), IDS_APPLICATION_TITLE);
}

CDisplayErrorMsg::Labels CSolidWorksAddInApp::ErrorBoxLabels() const {
  HINSTANCE module = CSolidWorksAddInModule::Instance().ModuleHandle();
  return {LoadResourceString(module, IDS_ERROR_CODE), LoadResourceString(module, IDS_LOG_FOLDER)};
}

CZALCmdInvoker::BoxTexts CSolidWorksAddInApp::ClientBoxTexts() const {
  HINSTANCE module = CSolidWorksAddInModule::Instance().ModuleHandle();
  return {LoadResourceString(module, IDS_CLIENT_DID_NOT_ANSWER), LoadResourceString(module, IDS_LOG_FOLDER),
          Title()};
}

int CSolidWorksAddInApp::ShowMessageBox(const std::wstring& text) const {
  HWND owner = GetActiveWindow();
  // Without an owner window, all windows of the thread are disabled.
  const UINT modality = owner ? MB_APPLMODAL : MB_TASKMODAL;
  return MessageBoxW(owner, text.c_str(), Title().c_str(), MB_OK | MB_ICONEXCLAMATION | modality);
}

bool CSolidWorksAddInApp::CanUnload() const noexcept { return !ModuleState::AnyThreadInside(); }
