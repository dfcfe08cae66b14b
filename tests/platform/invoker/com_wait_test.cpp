#include <windows.h>
// After windows.h, which they need.
#include <objidl.h>
#include <wrl/client.h>

#include <future>

#include "heap_blocks.h"
#include "host_object.h"
#include "host_thread.h"
#include "import_patch.h"
#include "invoker_fixture.h"
#include "system_function.h"
#include "wait_message_filter.h"

using Microsoft::WRL::ComPtr;
using plm_client::Reply;
using plm_client::Request;
using namespace std::chrono_literals;

namespace {

/// The message filter of the host.
class HostFilter final : public IMessageFilter {
 public:
  int incoming = 0;
  int pending = 0;
  DWORD answer = SERVERCALL_ISHANDLED;
  DWORD pending_answer = PENDINGMSG_CANCELCALL;

  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(IMessageFilter);
    *object = known ? static_cast<IMessageFilter*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, INTERFACEINFO*) override {
    ++incoming;
    return answer;
  }
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override { return static_cast<DWORD>(-1); }
  DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override {
    ++pending;
    return pending_answer;
  }
};

/// A host in a single-threaded apartment, with an object that the client calls from another apartment while
/// the host waits for the answer.
class ComWait : public InvokerFixture {
 protected:
  ComWait() {
    EXPECT_EQ(S_OK, CoMarshalInterThreadInterfaceInStream(__uuidof(IDispatch), &m_object, &m_marshalled));
    StartClient([this](const Request&, std::stop_token) {
      if (!m_call.valid()) BeginCall();
      if (m_call.wait_for(5s) != std::future_status::ready) return Reply::Text("not served");
      return Reply::Text(m_call.get());
    });
  }

  ~ComWait() override {
    while (m_call.valid() && m_call.wait_for(10ms) != std::future_status::ready) DrainMessages();
  }

  /// Calls the object from another apartment.
  void BeginCall() {
    m_call = std::async(std::launch::async, [this] { return CallObject(); });
  }

  const Apartment m_apartment{COINIT_APARTMENTTHREADED};
  HostObject m_object;

 private:
  std::string CallObject() {
    const Apartment own{COINIT_MULTITHREADED};
    ComPtr<IDispatch> proxy;
    UINT count = 0;
    HRESULT result = CoGetInterfaceAndReleaseStream(m_marshalled, __uuidof(IDispatch), &proxy);
    if (SUCCEEDED(result)) result = proxy->GetTypeInfoCount(&count);
    if (result == RPC_E_CALL_REJECTED) return "rejected";
    return SUCCEEDED(result) ? "served " + std::to_string(count) : "failed";
  }

  IStream* m_marshalled = nullptr;
  std::future<std::string> m_call;
};

TEST_F(ComWait, ServesACallFromAnotherApartment) {
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");
  EXPECT_EQ(m_object.called_on, GetCurrentThreadId());
}

TEST_F(ComWait, ServesACallThatCameBeforeItAndThatTheHostHasSeen) {
  BeginCall();
  while (!(HIWORD(GetQueueStatus(QS_ALLINPUT | QS_ALLPOSTMESSAGE)) & QS_POSTMESSAGE)) Sleep(1);
  EXPECT_EQ(LOWORD(GetQueueStatus(QS_ALLPOSTMESSAGE)), 0) << "it is not new any more";
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");
}

TEST_F(ComWait, ReturnsNoAnswerAtOnceForACommandWithinSuchACall) {
  std::wstring second = L"not invoked";
  m_object.action = [&] { second = Invoke(L"QD_PLMTaskManage"); };
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");
  EXPECT_EQ(second, L"");
  ExpectOneLine(L"QD_PLMTaskManage", L"another command is still waiting");
}

TEST_F(ComWait, AsksTheHostsFilterAboutCallsButNotAboutTheWait) {
  // given a host with a filter that would cancel a wait as soon as input comes
  const HostWindow window;
  HostFilter filter;
  ComPtr<IMessageFilter> previous, found;
  CoRegisterMessageFilter(&filter, &previous);
  PostMessageW(window.Handle(), WM_KEYDOWN, VK_RETURN, 0);
  m_object.action = [&] { PostMessageW(window.Handle(), WM_KEYDOWN, VK_RETURN, 0); };

  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");

  EXPECT_GE(filter.incoming, 1);
  EXPECT_EQ(filter.pending, 0);
  CoRegisterMessageFilter(nullptr, &found);
  EXPECT_EQ(found.Get(), &filter) << "the host's filter is registered again";
}

TEST_F(ComWait, AllowsTheHostsFilterToRejectCalls) {
  HostFilter filter;
  filter.answer = SERVERCALL_REJECTED;
  ComPtr<IMessageFilter> previous, found;
  CoRegisterMessageFilter(&filter, &previous);
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"rejected");
  EXPECT_EQ(m_object.called_on, 0u);
  CoRegisterMessageFilter(nullptr, &found);
}

const auto kRegisterFilter =
    SystemFunction<decltype(CoRegisterMessageFilter)>(L"ole32.dll", "CoRegisterMessageFilter");
int refusals_left = 0;

HRESULT WINAPI RefuseOrRegister(IMessageFilter* filter, IMessageFilter** previous) {
  return refusals_left-- > 0 ? E_OUTOFMEMORY : kRegisterFilter(filter, previous);
}

TEST_F(ComWait, KeepsTheHostsFilterIfItCannotRegisterItsOwn) {
  // given a host with a filter, and a system that refuses to register another one, once
  HostFilter filter;
  filter.pending_answer = PENDINGMSG_WAITDEFPROCESS;
  ComPtr<IMessageFilter> previous, found;
  CoRegisterMessageFilter(&filter, &previous);
  {
    refusals_left = 1;
    const ImportPatch patch(GetModuleHandleW(nullptr), "CoRegisterMessageFilter", &RefuseOrRegister);
    EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");
    EXPECT_LE(refusals_left, 0);
  }
  CoRegisterMessageFilter(nullptr, &found);
  EXPECT_EQ(found.Get(), &filter);
}

TEST_F(ComWait, KeepsAFilterThatTheHostRegistersMeanwhile) {
  // given a host that registers another filter within a call, and keeps the previous one
  HostFilter filter, other;
  other.pending_answer = PENDINGMSG_WAITDEFPROCESS;
  ComPtr<IMessageFilter> previous, replaced, found;
  CoRegisterMessageFilter(&filter, &previous);
  m_object.action = [&] { CoRegisterMessageFilter(&other, &replaced); };

  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");

  // then it stays registered, and the previous one passes all calls to the first filter
  CoRegisterMessageFilter(nullptr, &found);
  EXPECT_EQ(found.Get(), &other);
  ASSERT_TRUE(replaced);
  const int incoming = filter.incoming;
  EXPECT_EQ(replaced->HandleInComingCall(CALLTYPE_TOPLEVEL, nullptr, 0, nullptr), SERVERCALL_ISHANDLED);
  EXPECT_EQ(filter.incoming, incoming + 1);
  EXPECT_EQ(replaced->MessagePending(nullptr, 0, PENDINGTYPE_TOPLEVEL), PENDINGMSG_CANCELCALL);
  EXPECT_EQ(filter.pending, 1);
  EXPECT_EQ(replaced.Reset(), 0u) << "there is no other reference";
}

/// Counts the locks of the module during its lifetime.
class CountedModuleLocks {
 public:
  CountedModuleLocks() {
    locks = 0;
    CZALCmdInvoker::SetModuleLock([]() noexcept { ++locks; }, []() noexcept { --locks; });
  }
  CountedModuleLocks(const CountedModuleLocks&) = delete;
  CountedModuleLocks& operator=(const CountedModuleLocks&) = delete;
  ~CountedModuleLocks() { CZALCmdInvoker::SetModuleLock(nullptr, nullptr); }

  int Count() const { return locks; }

 private:
  static inline int locks;
};

TEST_F(ComWait, LocksTheModuleAsLongAsTheHostKeepsItsFilter) {
  // given a host that replaces the filter of the wait and keeps it
  const CountedModuleLocks locks;
  HostFilter other;
  other.pending_answer = PENDINGMSG_WAITDEFPROCESS;
  ComPtr<IMessageFilter> kept, found;
  m_object.action = [&] { CoRegisterMessageFilter(&other, &kept); };
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");
  CoRegisterMessageFilter(nullptr, &found);

  // then the module is locked until the host releases it
  ASSERT_TRUE(kept);
  EXPECT_EQ(locks.Count(), 1);
  EXPECT_EQ(kept->HandleInComingCall(CALLTYPE_TOPLEVEL, nullptr, 0, nullptr), SERVERCALL_ISHANDLED);
  kept.Reset();
  EXPECT_EQ(locks.Count(), 0);
}

TEST_F(ComWait, LocksTheModuleOnlyMeanwhileIfTheHostKeepsNothing) {
  const CountedModuleLocks locks;
  int during_the_wait = 0;
  m_object.action = [&] { during_the_wait = locks.Count(); };
  EXPECT_EQ(Invoke(L"QD_PLMQuery"), L"served 42");
  EXPECT_EQ(during_the_wait, 1);
  EXPECT_EQ(locks.Count(), 0);
}

TEST_F(ComWait, ThrowsNoExceptionOfAWindowThroughCom) {
  HostWindow window;
  window.OnPaint([] { throw 5; });
  const ThrowingDispatch dispatch;
  invoker::WaitMessageFilter wait;
  ComPtr<IMessageFilter> filter;
  CoRegisterMessageFilter(nullptr, &filter);
  InvalidateRect(window.Handle(), nullptr, TRUE);
  EXPECT_EQ(filter->MessagePending(nullptr, 0, PENDINGTYPE_TOPLEVEL), PENDINGMSG_CANCELCALL);
  EXPECT_THROW(wait.RethrowFromWindows(), int);
  EXPECT_NO_THROW(wait.RethrowFromWindows());
}

TEST_F(ComWait, LeaksNoFilter) {
  { const invoker::WaitMessageFilter first; }
  const std::size_t before = HeapBlockCount();
  for (int i = 0; i < 1'000; ++i) const invoker::WaitMessageFilter wait;
  EXPECT_LT(HeapBlockCount(), before + 100);
}

}  // namespace
