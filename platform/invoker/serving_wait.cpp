#include "serving_wait.h"

#include <objbase.h>

#include <algorithm>
#include <string>

#include "message_queue.h"
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

// How long COM calls wait at most while there is always something to do, in milliseconds.
constexpr ULONGLONG kCallInterval = 20;

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
    ServeWindows();  // the system's waits react to new messages only
    const DWORD milliseconds = std::min({deadline.Left(), m_deadline.Left(), kKeyInterval});
    if (const auto signalled = WaitOnce(handles, milliseconds)) return signalled;
    if (deadline.Left() == 0) return std::nullopt;
  }
}

void ServingWait::Serve() {
  ServeWindows();
  // The system serves COM calls only in a wait, and not if what it waits for is there already.
  if (IsToLookForCalls()) WaitOnce({Never()}, 0);
}

void ServingWait::ServeWindows() {
  // Looked at here, because a client that sends a byte now and then ends each single wait.
  if (m_deadline.Left() == 0) {
    throw WaitEnded{{L"there was no answer within " + std::to_wstring(m_timeout->count()) + L" ms"}};
  }
  const WORD messages = m_isNew ? m_input.FoundMessages() : MessagesInQueue();
  m_isNew = false;
  m_foundPosted = (messages & QS_POSTMESSAGE) != 0;
  if (messages == 0) return;
  if (m_input.DropKeys()) throw WaitEnded{{L"cancelled by the user"}};
  DispatchSentMessagesAndPaint();
}

/// Whether a COM call may be among the posted messages. Not asked of the system all the time: the host may
/// leave other messages there as long as the wait takes.
bool ServingWait::IsToLookForCalls() const {
  return m_filter && m_foundPosted && GetTickCount64() - m_lookedForCalls >= kCallInterval;
}

std::optional<std::size_t> ServingWait::WaitOnce(std::initializer_list<HANDLE> handles, DWORD milliseconds) {
  if (!m_filter) return WaitOutsideApartment(handles, milliseconds);
  std::optional<NewMessage> new_message;
  if (IsToLookForCalls()) {
    new_message.emplace();
    m_lookedForCalls = GetTickCount64();
  }
  return WaitInApartment(handles, milliseconds, *m_filter);
}

HANDLE ServingWait::Never() {
  if (!m_never) m_never = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!m_never) throw SystemFailure(L"an event cannot be created");
  return m_never.get();
}

bool ServingWait::Pause(std::chrono::milliseconds time, HANDLE handle) {
  return Until({handle ? handle : Never()}, time).has_value();
}

}  // namespace invoker
