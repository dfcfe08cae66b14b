// Calls of the host that the add-in serves while one of its commands waits for the PLM client.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "add_in_fixture.h"
#include "result_codes.h"

namespace {

/// Lets another thread run an action on this thread: a window that runs it for a message.
class ThreadAction {
 public:
  ThreadAction()
      : m_window(CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    EXPECT_TRUE(m_window);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  }
  ThreadAction(const ThreadAction&) = delete;
  ThreadAction& operator=(const ThreadAction&) = delete;
  ~ThreadAction() { DestroyWindow(m_window); }

  void Set(std::function<void()> action) { m_action = std::move(action); }
  void Run() const { SendMessageW(m_window, kRun, 0, 0); }

 private:
  static constexpr UINT kRun = WM_APP;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != kRun) return DefWindowProcW(window, message, wparam, lparam);
    reinterpret_cast<ThreadAction*>(GetWindowLongPtrW(window, GWLP_USERDATA))->m_action();
    return 0;
  }

  std::function<void()> m_action;
  HWND m_window;
};

/// Allocates and overwrites memory that was just freed, so that code which still uses it fails. The DLL and
/// the test share one heap.
class FreedMemory {
 public:
  void Overwrite() {
    for (std::size_t size = 16; size <= 4096; size += 8)
      m_blocks.insert(m_blocks.end(), 4, std::string(size, '\xCC'));
  }

 private:
  std::vector<std::string> m_blocks;
};

class ServedCall : public AddInFixture {
 protected:
  /// The PLM client runs m_action on this thread before each answer.
  ServedCall() {
    ServeWith([this](const plm_client::Request&, std::stop_token) {
      m_action.Run();
      return plm_client::Reply::Text(kLoginAnswer);
    });
  }

  ThreadAction m_action;
  FreedMemory m_freedMemory;
};

TEST_F(ServedCall, ThatReleasesTheAddInKeepsItAliveUntilTheCommandEnds) {
  Connect();
  ISolidWorksAddIn* const not_held = Object();
  m_action.Set([&] {
    EXPECT_TRUE(Disconnect());
    m_freedMemory.Overwrite();
    EXPECT_EQ(not_held->AddRef(), 2u);
    not_held->Release();
  });
  DISPPARAMS none{};
  EXPECT_EQ(not_held->Invoke(1, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(m_client->Requests().size(), 1u);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// The host holds the add-in by the object and by its callbacks.
TEST_F(ServedCall, ThatReleasesTheAddInKeepsItAliveUntilTheDisconnectionEnds) {
  m_action.Set([] {});
  ConnectAndLogIn();
  ISwAddin* const not_held = m_addIn->object;
  int logouts = 0;
  m_action.Set([&] {
    ++logouts;
    m_addIn->callbacks = nullptr;
    m_addIn->object = nullptr;
    m_freedMemory.Overwrite();
    EXPECT_EQ(not_held->AddRef(), 2u) << "the method's own reference is the only one left";
    not_held->Release();
  });

  VARIANT_BOOL disconnected = VARIANT_FALSE;
  EXPECT_EQ(not_held->DisconnectFromSW(&disconnected), S_OK);

  EXPECT_EQ(disconnected, VARIANT_TRUE);
  EXPECT_EQ(logouts, 1);
  EXPECT_TRUE(m_host->HeldReferences().empty()) << "the add-in was destroyed afterwards";
  EXPECT_EQ(m_home.LogLines(), Texts{});
  RestartHost();  // that host has no add-in to disconnect
}

TEST_F(ServedCall, ThatReconnectsLetsTheCommandKeepItsConnection) {
  Connect();
  m_action.Set([&] {
    EXPECT_TRUE(DisconnectObject());
    EXPECT_TRUE(ReconnectObject());
    m_freedMemory.Overwrite();
  });
  EXPECT_TRUE(Pick(L"PlmLogin").Succeeded());
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 1);
  // The command's connection closes when its invoker is destroyed.
  for (int tries = 0; tries < 200 && m_client->OpenConnectionCount() > 0; ++tries) Sleep(10);
  EXPECT_EQ(m_client->OpenConnectionCount(), 0);
  EXPECT_EQ(m_home.LogLines(), Texts{});
  m_action.Set([] {});
  EXPECT_TRUE(Pick(L"PlmWf").Succeeded());
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_F(ServedCall, ThatReconnectsAndInvokesASecondCommandStartsNoSecondCommand) {
  Connect();
  HRESULT second = S_OK;
  m_action.Set([&] {
    EXPECT_TRUE(DisconnectObject());
    EXPECT_TRUE(ReconnectObject());
    second = Object()->PlmLogin();
  });
  EXPECT_TRUE(Pick(L"PlmLogin").Succeeded());
  EXPECT_EQ(second, hr::kNoAnswer);
  EXPECT_EQ(m_client->Requests().size(), 1u);
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(PlatformLog()[0].find(L"another command is still waiting"), std::wstring::npos);
}

/// A message filter of the host that accepts every call.
class AcceptingFilter final : public IMessageFilter {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // not counted: a variable of the test
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(IMessageFilter);
    *object = known ? static_cast<IMessageFilter*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, INTERFACEINFO*) override {
    return SERVERCALL_ISHANDLED;
  }
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override { return static_cast<DWORD>(-1); }
  DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITDEFPROCESS; }
};

TEST_F(ServedCall, ThatKeepsTheFilterOfTheWaitKeepsTheDllLoaded) {
  // given a host that replaces the filter of the wait, keeps it and releases the add-in
  const AddInDll dll;
  AcceptingFilter filter;
  IMessageFilter* kept = nullptr;
  IMessageFilter* found = nullptr;
  Connect();
  m_action.Set([&] { CoRegisterMessageFilter(&filter, &kept); });
  EXPECT_TRUE(Pick(L"PlmLogin").Succeeded());
  m_action.Set([] {});
  CoRegisterMessageFilter(nullptr, &found);
  EXPECT_TRUE(Disconnect());
  CoFreeUnusedLibrariesEx(0, 0);

  // then the DLL stays loaded until the host releases the filter
  ASSERT_TRUE(kept);
  EXPECT_EQ(dll.CanUnloadNow(), S_FALSE);
  EXPECT_EQ(kept->HandleInComingCall(CALLTYPE_TOPLEVEL, nullptr, 0, nullptr),
            static_cast<DWORD>(SERVERCALL_ISHANDLED));
  kept->Release();
  EXPECT_EQ(dll.CanUnloadNow(), S_OK);
}

}  // namespace
