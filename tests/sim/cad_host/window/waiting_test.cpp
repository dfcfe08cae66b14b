// What the window does while the add-in waits for the PLM client.
#include <chrono>
#include <functional>
#include <thread>

#include "window/resource_ids.h"
#include "window_fixture.h"

namespace {

class WaitingTest : public WindowTest {
 protected:
  /// Logs in, and runs `action` on the thread of the PLM client before it answers.
  void LogInWhile(const std::function<void()>& action) {
    ServeWith([&](const plm_client::Request& request, std::stop_token) {
      if (request.command == "QD_PLMLogin") action();
      return plm_client::Reply::Text(kLoginAnswer);
    });
    Do({L"pick", L"Log In"});
  }

  /// What the window does with a message of another thread while the add-in waits.
  void Send(UINT message, WPARAM wparam, LPARAM lparam) {
    constexpr UINT kLongest = 5000;  // milliseconds
    SendMessageTimeoutW(Window().Handle(), message, wparam, lparam, SMTO_NORMAL, kLongest, nullptr);
  }
};

TEST_F(WaitingTest, ACommandIsRefused) {
  ShowWithAddIn();
  LogInWhile([this] { Send(WM_COMMAND, IDS_NEW_PART, 0); });
  EXPECT_TRUE(m_host->OpenDocuments().empty());
  Do({L"new", L"part"});
  EXPECT_EQ(m_host->OpenDocuments().size(), 1u) << "afterwards commands run again";
}

TEST_F(WaitingTest, EnableMethodsAreNotCalled) {
  ShowWithAddIn();
  Actions().Do({L"new", L"part"});  // the window has not been idle since
  LogInWhile([this] { Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(Window().Menus().Handle()), 0); });
  const auto& entries = m_host->GetJournal().Entries();
  std::size_t pick = 0;
  while (pick < entries.size() && entries[pick].method != L"PlmLogin") ++pick;
  ASSERT_LT(pick, entries.size());
  for (std::size_t inner = pick + 1; inner < entries.size() && entries[inner].depth > entries[pick].depth;
       ++inner) {
    EXPECT_FALSE(entries[inner].method.starts_with(L"Enable")) << Utf8(entries[inner].method);
  }
}

TEST_F(WaitingTest, TheWindowIsPainted) {
  ShowWithAddIn();
  bool painted = false;
  LogInWhile([&] {
    HWND view = Window().View().Handle();
    InvalidateRect(view, nullptr, FALSE);
    for (int tries = 0; tries < 100 && !painted; ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      painted = !GetUpdateRect(view, nullptr, FALSE);
    }
  });
  EXPECT_TRUE(painted);
}

}  // namespace
