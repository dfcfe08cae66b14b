#include "application.h"

#include <utility>

#include "com_module.h"
#include "module_state.h"
#include "resources/resource_ids.h"
#include "string_table.h"

CSolidWorksAddInApp& CSolidWorksAddInApp::Instance() noexcept {
  static CSolidWorksAddInApp application;
  return application;
}

bool CSolidWorksAddInApp::InitInstance() noexcept {
  // A slot of the system's rather than a thread_local, which would leave memory behind in every thread of
  // the host that outlives the DLL.
  m_slot = TlsAlloc();
  return m_slot != TLS_OUT_OF_INDEXES;
}

void CSolidWorksAddInApp::ExitInstance() noexcept { TlsFree(std::exchange(m_slot, TLS_OUT_OF_INDEXES)); }

std::wstring CSolidWorksAddInApp::Title() const {
  return LoadResourceString(CSolidWorksAddInModule::Instance().ModuleHandle(), IDS_APPLICATION_TITLE);
}

int CSolidWorksAddInApp::ShowMessageBox(const std::wstring& text) const {
  HWND owner = GetActiveWindow();
  // Without an owner to disable, all windows of the thread are.
  const UINT modality = owner ? MB_APPLMODAL : MB_TASKMODAL;
  return MessageBoxW(owner, text.c_str(), Title().c_str(), MB_OK | MB_ICONEXCLAMATION | modality);
}

HINSTANCE CSolidWorksAddInApp::ResourceModule() const noexcept {
  const auto module = static_cast<HINSTANCE>(TlsGetValue(m_slot));
  return module ? module : GetModuleHandleW(nullptr);
}

ModuleState::ModuleState() noexcept {
  CSolidWorksAddInApp& application = CSolidWorksAddInApp::Instance();
  ++application.m_states;
  m_previous = TlsGetValue(application.m_slot);
  TlsSetValue(application.m_slot, CSolidWorksAddInModule::Instance().ModuleHandle());
}

ModuleState::~ModuleState() {
  CSolidWorksAddInApp& application = CSolidWorksAddInApp::Instance();
  TlsSetValue(application.m_slot, m_previous);
  --application.m_states;
}
