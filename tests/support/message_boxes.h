/// @file Answers message boxes in a person's stead.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// A message box as it stood on the screen.
struct RecordedMessageBox {
  std::wstring text;
  std::wstring caption;
  UINT icon = 0;             ///< MB_ICONERROR and so on; 0 for none
  std::vector<int> buttons;  ///< ids such as IDOK, from left to right
};

/// Records the message boxes that come up on the thread that made it, and answers them in the order in
/// which answers were given. A box without an answer fails the test and is ended; so does, at the end, an
/// answer without a box. At most one per thread.
class MessageBoxRecorder {
 public:
  /// The answer that closes a box by its system menu, as Alt+F4 does.
  static constexpr int kClose = 0;

  /// @param answers ids of buttons, or kClose.
  explicit MessageBoxRecorder(std::initializer_list<int> answers = {});
  MessageBoxRecorder(const MessageBoxRecorder&) = delete;
  MessageBoxRecorder& operator=(const MessageBoxRecorder&) = delete;
  ~MessageBoxRecorder();

  /// Expects one more box and answers it with `button`.
  void Expect(int button) { m_answers.push_back(button); }

  /// Calls `look` while each box is up, before it is answered.
  void WhileUp(std::function<void()> look) { m_look = std::move(look); }

  /// The boxes so far.
  const std::vector<RecordedMessageBox>& Boxes() const { return m_boxes; }

 private:
  static LRESULT CALLBACK OnHook(int code, WPARAM wparam, LPARAM lparam);
  static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timer, DWORD time);
  void Answer(HWND box);

  std::deque<int> m_answers;
  std::function<void()> m_look = [] {};
  std::vector<RecordedMessageBox> m_boxes;
  std::set<HWND> m_open;    // a box may be activated more than once
  std::vector<HWND> m_new;  // not recorded yet
  HHOOK m_hook;
};
