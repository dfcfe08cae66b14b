#include "module_state.h"

#include <atomic>
#include <utility>

#include "com_module.h"

namespace {

constinit std::atomic<long> states_alive = 0;

// The current module of each thread. A TLS slot instead of a thread_local, which would leak memory in every
// host thread that outlives the DLL.
constinit DWORD current_module = TLS_OUT_OF_INDEXES;

}  // namespace

bool ModuleState::Initialize() noexcept {
  current_module = TlsAlloc();
  return current_module != TLS_OUT_OF_INDEXES;
}

void ModuleState::Terminate() noexcept { TlsFree(std::exchange(current_module, TLS_OUT_OF_INDEXES)); }

HINSTANCE ModuleState::ResourceModule() noexcept {
  const auto module = static_cast<HINSTANCE>(TlsGetValue(current_module));
  return module ? module : GetModuleHandleW(nullptr);
}

bool ModuleState::AnyThreadInside() noexcept { return states_alive != 0; }

ModuleState::ModuleState() noexcept : m_previous(TlsGetValue(current_module)) {
  ++states_alive;
  TlsSetValue(current_module, CSolidWorksAddInModule::Instance().ModuleHandle());
}

ModuleState::~ModuleState() {
  TlsSetValue(current_module, m_previous);
  --states_alive;
}
