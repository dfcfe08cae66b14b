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

/// Puts a message filter of its own in place of the host's as long as it lives, on a thread in a
/// single-threaded apartment. Where the system refuses it, the host's stays.
///
/// A host's own filter would rule over our wait as over a call of its own: show a "server busy" box after
/// some seconds, dispatch input, or cancel the wait. Whether calls from outside may come in remains the
/// host's decision. A filter that the host puts in place meanwhile stays there at the end.
class WaitMessageFilter {
 public:
  WaitMessageFilter();
  WaitMessageFilter(const WaitMessageFilter&) = delete;
  WaitMessageFilter& operator=(const WaitMessageFilter&) = delete;
  ~WaitMessageFilter();

  /// Throws what a window of the thread threw while COM waited; COM itself ended the wait with an error.
  void RethrowFromWindows();

 private:
  class Filter;
  Microsoft::WRL::ComPtr<Filter> m_filter;  // null where the host's stayed
};

}  // namespace invoker
