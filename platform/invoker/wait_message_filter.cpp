#include "wait_message_filter.h"

#include <objbase.h>

#include <atomic>
#include <exception>
#include <utility>

using Microsoft::WRL::ComPtr;

namespace invoker {
namespace {

constexpr DWORD kCancelRejectedCall = static_cast<DWORD>(-1);

}  // namespace

void DispatchSentMessagesAndPaint() {
  // A window that does not validate what it paints would be due for ever.
  constexpr int kAtMost = 100;
  MSG message;
  for (int i = 0; i < kAtMost; ++i) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE)) return;
    DispatchMessageW(&message);
  }
}

/// The COM object. A host that replaced it may keep it as its previous filter and put it back long after
/// the wait: from the end of the wait on it only passes on to the host's filter.
class WaitMessageFilter::Filter final : public IMessageFilter {
 public:
  /// @return whether the filter is in place now.
  bool Register() { return SUCCEEDED(CoRegisterMessageFilter(this, &m_hosts)); }

  /// Puts the host's filter back, unless the host replaced this one by another.
  void Restore() {
    ComPtr<IMessageFilter> in_place;
    m_waiting = false;
    if (FAILED(CoRegisterMessageFilter(m_hosts.Get(), &in_place)) || in_place.Get() == this) return;
    CoRegisterMessageFilter(in_place.Get(), nullptr);
  }

  std::exception_ptr TakeThrown() { return std::exchange(m_thrown, nullptr); }

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
    if (m_hosts) return m_hosts->HandleInComingCall(call_type, caller, ticks, info);
    return SERVERCALL_ISHANDLED;
  }

  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK callee, DWORD ticks, DWORD reject_type) override {
    return m_hosts ? m_hosts->RetryRejectedCall(callee, ticks, reject_type) : kCancelRejectedCall;
  }

  DWORD STDMETHODCALLTYPE MessagePending(HTASK callee, DWORD ticks, DWORD pending_type) override {
    if (m_waiting) return ServeWindows();
    if (m_hosts) return m_hosts->MessagePending(callee, ticks, pending_type);
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  ~Filter() = default;

  /// No exception may go through COM, which called this: it ends the wait and is thrown behind it.
  DWORD ServeWindows() {
    try {
      DispatchSentMessagesAndPaint();
      return PENDINGMSG_WAITNOPROCESS;
    } catch (...) {
      m_thrown = std::current_exception();
      return PENDINGMSG_CANCELCALL;
    }
  }

  std::atomic<ULONG> m_references = 0;
  bool m_waiting = true;
  ComPtr<IMessageFilter> m_hosts;
  std::exception_ptr m_thrown;
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
  if (const std::exception_ptr thrown = m_filter->TakeThrown()) std::rethrow_exception(thrown);
}

}  // namespace invoker
