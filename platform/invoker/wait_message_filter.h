/// @file How messages are handled while a command waits.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>
#include <wrl/client.h>

namespace invoker {

/// Handles the messages that other threads sent to this thread, and pending repaints; leaves everything else
/// in the queue.
void DispatchSentMessagesAndPaint();

/// Replaces the host's message filter with its own during its lifetime, on a thread in a single-threaded
/// apartment. If the system refuses that, the host's filter stays.
///
/// The host's filter would handle this wait like a call of the host: show a "server busy" box after some
/// seconds, dispatch input, or cancel the wait. The host's filter still decides whether incoming calls are
/// accepted. If the host registers another filter meanwhile, that one stays.
class WaitMessageFilter {
 public:
  WaitMessageFilter();
  WaitMessageFilter(const WaitMessageFilter&) = delete;
  WaitMessageFilter& operator=(const WaitMessageFilter&) = delete;
  ~WaitMessageFilter();

  /// Rethrows the exception of a window procedure that COM called during the wait, if there is one.
  void RethrowFromWindows();

 private:
  class Filter;
  Microsoft::WRL::ComPtr<Filter> m_filter;  // null if the host's filter stayed
};

}  // namespace invoker
