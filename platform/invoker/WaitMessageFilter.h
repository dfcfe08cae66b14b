/// @file What COM does with messages while a command waits.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>
#include <wrl/client.h>

namespace invoker {

/// Handles the messages that other threads sent to this one and the repaints that are due; leaves
/// everything else in the queue.
void DispatchSentMessagesAndPaint();

/// Stands in for the host's message filter as long as it lives, on a thread in a single-threaded apartment.
///
/// A host's own filter would rule over our wait as over a call of its own: show a "server busy" box after
/// some seconds, dispatch input, or cancel the wait. Whether calls from outside may come in remains the
/// host's decision.
class WaitMessageFilter final : public IMessageFilter {
 public:
  WaitMessageFilter();
  WaitMessageFilter(const WaitMessageFilter&) = delete;
  WaitMessageFilter& operator=(const WaitMessageFilter&) = delete;
  ~WaitMessageFilter();

  // COM drops its references when the host's filter is put back; the object's owner ends its life.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;

  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD callType, HTASK caller, DWORD ticks,
                                             INTERFACEINFO* info) override;
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK callee, DWORD ticks, DWORD rejectType) override;
  DWORD STDMETHODCALLTYPE MessagePending(HTASK callee, DWORD ticks, DWORD pendingType) override;

 private:
  Microsoft::WRL::ComPtr<IMessageFilter> m_hosts;
};

}  // namespace invoker
