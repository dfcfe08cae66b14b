#include "serving_wait.h"

#include <objbase.h>

#include <algorithm>
#include <string>

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

// How often the keys are looked at, in milliseconds. The system's waits do not end for input.
constexpr DWORD kKeyInterval = 100;

std::optional<std::size_t> WaitInApartment(std::initializer_list<HANDLE> handles, DWORD milliseconds,
                                           WaitMessageFilter& filter) {
  DWORD signalled = 0;
  const HRESULT result =
      CoWaitForMultipleHandles(COWAIT_DEFAULT, milliseconds, static_cast<ULONG>(handles.size()),
                               const_cast<HANDLE*>(handles.begin()), &signalled);
  filter.RethrowFromWindows();
  if (result == RPC_S_CALLPENDING) return std::nullopt;
  if (FAILED(result)) throw SystemFailure(L"waiting failed", static_cast<DWORD>(result));
  return signalled;
}

/// Serves sent messages and repaints. For a thread to which COM sends no calls through its message queue.
std::optional<std::size_t> WaitOutsideApartment(std::initializer_list<HANDLE> handles, DWORD milliseconds) {
  const Deadline deadline{std::chrono::milliseconds(milliseconds)};
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

Deadline::Deadline(std::optional<std::chrono::milliseconds> timeout) {
  if (timeout) m_end = GetTickCount64() + static_cast<ULONGLONG>(timeout->count());
}

DWORD Deadline::Left() const {
  if (!m_end) return INFINITE;
  const ULONGLONG now = GetTickCount64();
  return now < *m_end ? static_cast<DWORD>(*m_end - now) : 0;
}

ServingWait::ServingWait(std::optional<std::chrono::milliseconds> timeout)
    : m_timeout(timeout), m_deadline(timeout) {
  if (IsInSingleThreadedApartment()) m_filter.emplace();
}

std::optional<std::size_t> ServingWait::Until(std::initializer_list<HANDLE> handles,
                                              std::optional<std::chrono::milliseconds> timeout) {
  const Deadline deadline(timeout);
  for (;;) {
    Serve();  // the system's waits react to new messages only
    const DWORD milliseconds = std::min({deadline.Left(), m_deadline.Left(), kKeyInterval});
    if (const auto signalled = WaitOnce(handles, milliseconds)) return signalled;
    if (deadline.Left() == 0) return std::nullopt;
  }
}

void ServingWait::Serve() {
  // Looked at here, because a client that sends a byte now and then ends each single wait.
  if (m_deadline.Left() == 0) {
    throw WaitEnded{{L"there was no answer within " + std::to_wstring(m_timeout->count()) + L" ms"}};
  }
  const bool has_messages = m_isNew ? m_input.FoundMessages() : HasMessages();
  m_isNew = false;
  if (!has_messages) return;
  if (m_input.DropKeys()) throw WaitEnded{{L"cancelled by the user"}};
  DispatchSentMessagesAndPaint();
}

std::optional<std::size_t> ServingWait::WaitOnce(std::initializer_list<HANDLE> handles, DWORD milliseconds) {
  return m_filter ? WaitInApartment(handles, milliseconds, *m_filter)
                  : WaitOutsideApartment(handles, milliseconds);
}

bool ServingWait::Pause(std::chrono::milliseconds time, HANDLE handle) {
  if (handle) return Until({handle}, time).has_value();
  const UniqueHandle never = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!never) throw SystemFailure(L"an event cannot be created");
  return Until({never.get()}, time).has_value();
}

}  // namespace invoker
