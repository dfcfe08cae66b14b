#include "window_fixture.h"

#include <array>

WindowTest::WindowTest() {
  m_boxes.reset();  // the session looks at message boxes itself
  m_actions = std::make_unique<cad_host::Actions>(*m_host, m_transcript);
}

void WindowTest::TearDown() {
  if (m_window) EndSession();
  AddInFixture::TearDown();
}

void WindowTest::EndSession() {
  m_actions->End();
  m_window.reset();
  m_actions.reset();
  MSG message{};
  PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

cad_host::MainWindow& WindowTest::Show(const cad_host::WindowOptions& options) {
  cad_host::WindowOptions used = options;
  // An empty script keeps the window from connecting the add-ins that are set to load at the start.
  if (used.script.empty()) used.script = m_folder.Write(L"nothing.txt", "");
  used.stay = true;
  m_window = std::make_unique<cad_host::MainWindow>(*m_host, *m_actions, used);
  PassOn();
  return *m_window;
}

cad_host::MainWindow& WindowTest::ShowWithAddIn() {
  Show();
  Do({L"connect", kTitle});
  return *m_window;
}

void WindowTest::PassOn() {
  window::MessageLoop loop(m_window->Handle(), nullptr);
  loop.PassOnWaiting();
  m_window->OnIdle();
  loop.PassOnWaiting();
}

void WindowTest::Do(const std::vector<std::wstring>& words) {
  EXPECT_TRUE(m_actions->Do(words));
  PassOn();
}

std::wstring WindowTest::Cell(HWND list, int row, int column) {
  std::array<wchar_t, 512> text{};
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = text.data();
  item.cchTextMax = static_cast<int>(text.size());
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return text.data();
}

Texts WindowTest::Column(HWND list, int column) {
  Texts texts;
  const int count = ListView_GetItemCount(list);
  for (int row = 0; row < count; ++row) texts.push_back(Cell(list, row, column));
  return texts;
}

void WindowTest::Press(HWND control, WPARAM key) {
  SendMessageW(control, WM_KEYDOWN, key, 0);
  SendMessageW(control, WM_KEYUP, key, 0);
}
