#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>

#include <thread>

#include "host_thread.h"
#include "invoker_fixture.h"
#include "raw_server.h"

namespace {

/// The message box for a client that cannot be reached. That there is no box in all other cases, each test of
/// this program checks: see InvokerFixture.
class ClientBox : public InvokerFixture {
 protected:
  ClientBox() { ConfigurePipe(); }

  std::wstring Reason() const {
    return LR"(there is no pipe \\.\pipe\)" + m_pipe + L", and no client program is configured";
  }
};

TEST_F(ClientBox, ShowsTheReasonAndTheLogFolder) {
  EXPECT_EQ(InvokeUnreached(L"QD_PLMQuery"), L"");
  ExpectOneLine(L"QD_PLMQuery", Reason());
  ASSERT_EQ(m_boxes.Boxes().size(), 1u);
  const RecordedMessageBox& box = m_boxes.Boxes()[0];
  EXPECT_EQ(box.text,
            L"The PLM client did not answer.\n\n" + Reason() + L"\nLog folder: " + m_folder.Path(L"log"));
  EXPECT_EQ(box.caption, L"TAVO");
  EXPECT_EQ(box.icon, static_cast<UINT>(MB_ICONWARNING));
  EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
}

TEST_F(ClientBox, TakesItsTextsFromTheModule) {
  CZALCmdInvoker::SetBoxTexts([] {
    return CZALCmdInvoker::BoxTexts{L"\u6D4B line", L"\u6D4B folder:", L"\u6D4B caption"};
  });
  InvokeUnreached(L"QD_PLMQuery");
  CZALCmdInvoker::SetBoxTexts(nullptr);
  ASSERT_EQ(m_boxes.Boxes().size(), 1u);
  EXPECT_EQ(m_boxes.Boxes()[0].text,
            L"\u6D4B line\n\n" + Reason() + L"\n\u6D4B folder: " + m_folder.Path(L"log"));
  EXPECT_EQ(m_boxes.Boxes()[0].caption, L"\u6D4B caption");
}

TEST_F(ClientBox, IsNotShownIfTheCommandHasNone) {
  EXPECT_EQ(m_invoker.Invoke(L"QD_PLMLogout", L"", {.shows_box = false}), L"");
  ExpectOneLine(L"QD_PLMLogout", Reason());
}

TEST_F(ClientBox, DisablesTheHostsWindowsWhileItIsOpen) {
  const HostWindow window;
  bool enabled = true;
  m_boxes.WhileUp([&] { enabled = IsWindowEnabled(window.Handle()); });
  InvokeUnreached(L"QD_PLMQuery");
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(IsWindowEnabled(window.Handle()));
}

TEST_F(ClientBox, IsShownAfterTheWait) {
  // given a thread on which a wait has its own message filter
  const Apartment apartment{COINIT_APARTMENTTHREADED};
  IMessageFilter* filter_of_wait = nullptr;
  m_boxes.WhileUp([&] { CoRegisterMessageFilter(nullptr, &filter_of_wait); });
  InvokeUnreached(L"QD_PLMQuery");
  EXPECT_EQ(filter_of_wait, nullptr);
}

TEST_F(ClientBox, IsNotClosedByAKeyThatWasPressedDuringTheWait) {
  // given Enter pressed while the invoker waits for a busy pipe
  StartClient(plm_client::Settings{.instances = 1});
  const UniqueHandle other = OpenPipe(m_pipe);
  const HostWindow window;
  const std::jthread person([&] {
    Sleep(300);
    PostMessageW(window.Handle(), WM_KEYDOWN, VK_RETURN, 0);
  });
  bool key_in_queue = true;
  m_boxes.WhileUp([&] {
    MSG message;
    key_in_queue = PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE);
  });
  InvokeUnreached(L"QD_PLMQuery");
  EXPECT_FALSE(key_in_queue);
}

TEST_F(ClientBox, AllowsNoSecondCommandWhileItIsOpen) {
  std::wstring second = L"not invoked";
  m_boxes.WhileUp([&] { second = Invoke(L"QD_PLMTaskManage"); });
  InvokeUnreached(L"QD_PLMQuery");
  EXPECT_EQ(second, L"");
  const std::vector<std::wstring> lines = PlatformLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NE(lines[1].find(L"another command is still waiting"), std::wstring::npos);
}

}  // namespace
