/// @file Answers message boxes in place of a person.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

#include "message_boxes/message_box_hook.h"

/// What a message box showed.
using RecordedMessageBox = message_boxes::MessageBoxContent;

/// Records the message boxes of the thread that created it, and answers them with the given answers in their
/// order. A box without an answer fails the test and is closed. An answer without a box fails the test at
/// the end. At most one object per thread.
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

  /// Calls `look` while each box is open, before it is answered.
  void WhileUp(std::function<void()> look) { m_look = std::move(look); }

  /// The boxes so far.
  const std::vector<RecordedMessageBox>& Boxes() const { return m_boxes; }

 private:
  void OnBox(HWND box);

  /// @return whether the answer could be given.
  static bool Answer(HWND box, int answer);

  std::deque<int> m_answers;
  std::function<void()> m_look = [] {};
  std::vector<RecordedMessageBox> m_boxes;
  message_boxes::MessageBoxHook m_hook;
};
