// Windows, their fonts and messages.
#include "window/window.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "window/font.h"
#include "window/message_loop.h"

namespace {

constexpr UINT kThrow = WM_APP;
constexpr UINT kRemember = WM_APP + 1;

/// Remembers what it was sent and the errors that have left its messages.
class TestWindow : public window::Window {
 public:
  TestWindow() {
    Create({.class_name = L"TestWindow", .title = L"A window 螺栓", .style = WS_OVERLAPPEDWINDOW});
  }

  WPARAM remembered = 0;
  std::wstring error;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override {
    if (message == kThrow) throw std::runtime_error("\xe8\x9e\xba\xe6\xa0\x93 is missing");
    if (message == kRemember) remembered = wparam;
    return Window::OnMessage(message, wparam, lparam);
  }
  void OnError(const std::wstring& text) override { error = text; }
};

TEST(WindowTest, OwnsItsWindow) {
  auto owner = std::make_unique<TestWindow>();
  HWND handle = owner->Handle();
  EXPECT_TRUE(IsWindow(handle));
  EXPECT_EQ(window::TextOfWindow(handle), L"A window 螺栓");
  owner.reset();
  EXPECT_FALSE(IsWindow(handle));
}

TEST(WindowTest, HasNoHandleAfterTheSystemDestroyedIt) {
  const TestWindow test;
  DestroyWindow(test.Handle());
  EXPECT_EQ(test.Handle(), nullptr);
}

TEST(WindowTest, AnExceptionThatLeavesAMessageIsAnError) {
  const TestWindow test;
  EXPECT_EQ(SendMessageW(test.Handle(), kThrow, 0, 0), 0);
  EXPECT_EQ(test.error, L"螺栓 is missing");
}

TEST(WindowTest, TheLoopPassesMessagesOnUntilItQuits) {
  const TestWindow test;
  window::MessageLoop loop(test.Handle(), nullptr);
  int idle = 0;
  constexpr int kExitCode = 7;
  loop.OnIdle([&] {
    ++idle;
    PostQuitMessage(kExitCode);
  });
  PostMessageW(test.Handle(), kRemember, 5, 0);
  EXPECT_EQ(loop.Run(), kExitCode);
  EXPECT_EQ(test.remembered, 5u);
  EXPECT_EQ(idle, 1);
}

TEST(WindowTest, TextTakesMoreRoomAtAHigherDensity) {
  const window::UniqueFont normal = window::MessageFont(window::Dpi());
  const window::UniqueFont dense = window::MessageFont(window::Dpi(192));
  const SIZE small = window::SizeOfText(normal.get(), L"Bolt M8");
  const SIZE large = window::SizeOfText(dense.get(), L"Bolt M8");
  EXPECT_GT(small.cx, 0);
  EXPECT_GE(large.cy, small.cy * 3 / 2);
  EXPECT_EQ(window::Dpi(144).Scale(10), 15);
}

}  // namespace
