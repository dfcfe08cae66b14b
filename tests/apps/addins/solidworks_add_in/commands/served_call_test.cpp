// Calls of the host that the add-in serves while one of its commands waits for the PLM client.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "add_in_fixture.h"

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

TEST_F(ServedCall, ThatReconnectsLetsTheCommandKeepItsConnection) {
  Connect();
  m_action.Set([&] {
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(m_addIn->object->DisconnectFromSW(&done), S_OK);
    EXPECT_EQ(m_addIn->object->ConnectToSW(m_host->Application(), m_addIn->cookie, &done), S_OK);
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

}  // namespace
