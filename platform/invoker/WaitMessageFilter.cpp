#include "WaitMessageFilter.h"

#include <objbase.h>

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

WaitMessageFilter::WaitMessageFilter() { CoRegisterMessageFilter(this, &m_hosts); }

WaitMessageFilter::~WaitMessageFilter() {
  Microsoft::WRL::ComPtr<IMessageFilter> replaced;
  CoRegisterMessageFilter(m_hosts.Get(), &replaced);
}

HRESULT WaitMessageFilter::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  const bool known = IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(IMessageFilter));
  *object = known ? static_cast<IMessageFilter*>(this) : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

DWORD WaitMessageFilter::HandleInComingCall(DWORD callType, HTASK caller, DWORD ticks, INTERFACEINFO* info) {
  if (m_hosts) return m_hosts->HandleInComingCall(callType, caller, ticks, info);
  return SERVERCALL_ISHANDLED;
}

DWORD WaitMessageFilter::RetryRejectedCall(HTASK callee, DWORD ticks, DWORD rejectType) {
  return m_hosts ? m_hosts->RetryRejectedCall(callee, ticks, rejectType) : kCancelRejectedCall;
}

DWORD WaitMessageFilter::MessagePending(HTASK, DWORD, DWORD) {
  DispatchSentMessagesAndPaint();
  return PENDINGMSG_WAITNOPROCESS;
}

}  // namespace invoker
