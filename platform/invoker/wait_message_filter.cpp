#include "wait_message_filter.h"

#include <objbase.h>

#include <atomic>
#include <exception>
#include <utility>

#include "module_services.h"

using Microsoft::WRL::ComPtr;

namespace invoker {
namespace {

constexpr DWORD kCancelRejectedCall = static_cast<DWORD>(-1);

}  // namespace

void DispatchSentMessagesAndPaint() {
  // Limited, because a window that does not validate its update region gets WM_PAINT forever.
  constexpr int kMaximumMessages = 100;
  MSG message;
  for (int i = 0; i < kMaximumMessages; ++i) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE)) return;
    DispatchMessageW(&message);
  }
}

/// The COM object. A host that replaces it may keep it as the previous filter and restore it long after the
/// wait. So after the wait it only forwards calls to the host's filter, and it keeps the module loaded.
class WaitMessageFilter::Filter final : public IMessageFilter {
 public:
  /// @return whether the filter is registered now.
  bool Register() { return SUCCEEDED(CoRegisterMessageFilter(this, &m_hostFilter)); }

  /// Restores the host's filter, unless the host has replaced this one with another.
  void Restore() {
    ComPtr<IMessageFilter> current;
    m_waiting = false;
    if (FAILED(CoRegisterMessageFilter(m_hostFilter.Get(), &current)) || current.Get() == this) return;
    CoRegisterMessageFilter(current.Get(), nullptr);
  }

  std::exception_ptr TakeException() { return std::exchange(m_exception, nullptr); }

  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(id, __uuidof(IUnknown)) && !IsEqualIID(id, __uuidof(IMessageFilter))) {
      return E_NOINTERFACE;
    }
    *object = static_cast<IMessageFilter*>(this);
    AddRef();
    return S_OK;
  }

  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD call_type, HTASK caller, DWORD ticks,
                                             INTERFACEINFO* info) override {
    if (m_hostFilter) return m_hostFilter->HandleInComingCall(call_type, caller, ticks, info);
    return SERVERCALL_ISHANDLED;
  }

  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK callee, DWORD ticks, DWORD reject_type) override {
    return m_hostFilter ? m_hostFilter->RetryRejectedCall(callee, ticks, reject_type) : kCancelRejectedCall;
  }

  DWORD STDMETHODCALLTYPE MessagePending(HTASK callee, DWORD ticks, DWORD pending_type) override {
    if (m_waiting) return ServeWindows();
    if (m_hostFilter) return m_hostFilter->MessagePending(callee, ticks, pending_type);
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  ~Filter() = default;

  /// Exceptions must not pass through COM, which calls this: one ends the wait and is rethrown after it.
  DWORD ServeWindows() {
    try {
      DispatchSentMessagesAndPaint();
      return PENDINGMSG_WAITNOPROCESS;
    } catch (...) {
      m_exception = std::current_exception();
      return PENDINGMSG_CANCELCALL;
    }
  }

  const ModuleLock m_lock;
  std::atomic<ULONG> m_references = 0;
  bool m_waiting = true;
  ComPtr<IMessageFilter> m_hostFilter;
  std::exception_ptr m_exception;
};

WaitMessageFilter::WaitMessageFilter() {
  const ComPtr<Filter> filter(new Filter);
  if (filter->Register()) m_filter = filter;
}

WaitMessageFilter::~WaitMessageFilter() {
  if (m_filter) m_filter->Restore();
}

void WaitMessageFilter::RethrowFromWindows() {
  if (!m_filter) return;
  if (const std::exception_ptr exception = m_filter->TakeException()) std::rethrow_exception(exception);
}

}  // namespace invoker
