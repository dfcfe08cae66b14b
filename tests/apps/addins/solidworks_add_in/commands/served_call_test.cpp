// What the host may do to the add-in while a command of it waits for the PLM client.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "add_in_fixture.h"

namespace {

/// A window of this thread that acts when another thread sends it a message.
class Bell {
 public:
  Bell() : m_window(CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    EXPECT_TRUE(m_window);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  }
  Bell(const Bell&) = delete;
  Bell& operator=(const Bell&) = delete;
  ~Bell() { DestroyWindow(m_window); }

  void OnRing(std::function<void()> action) { m_action = std::move(action); }
  void Ring() const { SendMessageW(m_window, kRing, 0, 0); }

 private:
  static constexpr UINT kRing = WM_APP;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != kRing) return DefWindowProcW(window, message, wparam, lparam);
    reinterpret_cast<Bell*>(GetWindowLongPtrW(window, GWLP_USERDATA))->m_action();
    return 0;
  }

  std::function<void()> m_action;
  HWND m_window;
};

/// Takes what was freed a moment ago and writes over it, so that whoever still uses it is found out. The DLL
/// and the test have one heap.
class Scribbles {
 public:
  void Fill() {
    for (std::size_t size = 16; size <= 4096; size += 8)
      m_blocks.insert(m_blocks.end(), 4, std::string(size, '\xCC'));
  }

 private:
  std::vector<std::string> m_blocks;
};

class ServedCall : public AddInTest {
 protected:
  /// Rings the bell before each answer.
  ServedCall() {
    ServeWith([this](const plm_client::Request&, std::stop_token) {
      m_bell.Ring();
      return plm_client::Reply::Text(kLoginAnswer);
    });
  }

  Bell m_bell;
  Scribbles m_scribbles;
};

TEST_F(ServedCall, ThatLetsGoOfTheAddInLeavesItAliveUntilTheCommandHasEnded) {
  Connect();
  ISolidWorksAddIn* const held_by_nobody = Object();
  m_bell.OnRing([&] {
    EXPECT_TRUE(Disconnect());
    m_scribbles.Fill();
    EXPECT_EQ(held_by_nobody->AddRef(), 2u);
    held_by_nobody->Release();
  });
  DISPPARAMS none{};
  EXPECT_EQ(
      held_by_nobody->Invoke(1, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
      S_OK);
  EXPECT_EQ(m_client->Requests().size(), 1u);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_F(ServedCall, ThatConnectsAnewLeavesTheCommandItsConnection) {
  Connect();
  m_bell.OnRing([&] {
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(m_addIn->object->DisconnectFromSW(&done), S_OK);
    EXPECT_EQ(m_addIn->object->ConnectToSW(m_host->Application(), m_addIn->cookie, &done), S_OK);
    m_scribbles.Fill();
  });
  EXPECT_TRUE(Pick(L"PlmLogin").Succeeded());
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 1);
  // The connection that the command kept goes with the invoker that it was sent by.
  for (int tries = 0; tries < 200 && m_client->OpenConnectionCount() > 0; ++tries) Sleep(10);
  EXPECT_EQ(m_client->OpenConnectionCount(), 0);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
  m_bell.OnRing([] {});
  EXPECT_TRUE(Pick(L"PlmWf").Succeeded());
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

}  // namespace
