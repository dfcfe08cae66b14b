#include "serving_wait.h"

#include <objbase.h>

#include "base/unique_handle.h"
#include "system_failure.h"

namespace invoker {
namespace {

/// Whether COM calls reach this thread through its message queue.
bool IsInSingleThreadedApartment() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) && (type == APTTYPE_STA || type == APTTYPE_MAINSTA);
}

/// The remaining time of a wait, as system calls take it.
class Deadline {
 public:
  explicit Deadline(std::optional<std::chrono::milliseconds> timeout) {
    if (timeout) m_end = GetTickCount64() + timeout->count();
  }

  DWORD Left() const {
    if (!m_end) return INFINITE;
    const ULONGLONG now = GetTickCount64();
    return now < *m_end ? static_cast<DWORD>(*m_end - now) : 0;
  }

 private:
  std::optional<ULONGLONG> m_end;
};

std::optional<std::size_t> WaitInApartment(std::initializer_list<HANDLE> handles, const Deadline& deadline,
                                           WaitMessageFilter& filter) {
  DWORD signalled = 0;
  const HRESULT result =
      CoWaitForMultipleHandles(COWAIT_DEFAULT, deadline.Left(), static_cast<ULONG>(handles.size()),
                               const_cast<HANDLE*>(handles.begin()), &signalled);
  filter.RethrowFromWindows();
  if (result == RPC_S_CALLPENDING) return std::nullopt;
  if (FAILED(result)) throw SystemFailure(L"waiting failed", static_cast<DWORD>(result));
  return signalled;
}

/// Serves sent messages and repaints. For a thread to which COM sends no calls through its message queue.
std::optional<std::size_t> WaitOutsideApartment(std::initializer_list<HANDLE> handles,
                                                const Deadline& deadline) {
  const auto count = static_cast<DWORD>(handles.size());
  for (;;) {
    const DWORD result =
        MsgWaitForMultipleObjectsEx(count, handles.begin(), deadline.Left(), QS_SENDMESSAGE | QS_PAINT, 0);
    if (result == WAIT_TIMEOUT) return std::nullopt;
    if (result == WAIT_FAILED) throw SystemFailure(L"waiting failed");
    if (result != WAIT_OBJECT_0 + count) return result - WAIT_OBJECT_0;
    DispatchSentMessagesAndPaint();
  }
}

}  // namespace

ServingWait::ServingWait() {
  if (IsInSingleThreadedApartment()) m_filter.emplace();
}

std::optional<std::size_t> ServingWait::Until(std::initializer_list<HANDLE> handles,
                                              std::optional<std::chrono::milliseconds> timeout) {
  const Deadline deadline(timeout);
  DispatchSentMessagesAndPaint();  // the system's waits react to new messages only
  return m_filter ? WaitInApartment(handles, deadline, *m_filter) : WaitOutsideApartment(handles, deadline);
}

bool ServingWait::Pause(std::chrono::milliseconds time, HANDLE handle) {
  if (handle) return Until({handle}, time).has_value();
  const UniqueHandle never = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!never) throw SystemFailure(L"an event cannot be created");
  return Until({never.get()}, time).has_value();
}

}  // namespace invoker
