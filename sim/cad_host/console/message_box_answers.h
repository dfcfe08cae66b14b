/// @file Answers for message boxes, prepared before the boxes are shown.
#pragma once

#include <windows.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "cad_host/journal.h"
#include "message_boxes/message_box_hook.h"

namespace cad_host {

/// Writes the message boxes of its thread into the journal and answers each with the next answer that was
/// queued; a box without an answer stays open for the person. At most one object per thread.
class MessageBoxAnswers {
 public:
  explicit MessageBoxAnswers(Journal& journal);

  /// Boxes that are shown while there is none of these are not looked at: they do not come from an add-in.
  class Listening {
   public:
    explicit Listening(MessageBoxAnswers& answers) : m_answers(answers) { ++m_answers.m_listening; }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() { --m_answers.m_listening; }

   private:
    MessageBoxAnswers& m_answers;
  };

  /// Answers one more box with the button `name`: OK, Cancel, Yes, No, Retry, Abort or Ignore. Before that,
  /// a picture called `picture` is taken, if that is not empty.
  /// @return false if there is no such button.
  bool Queue(const std::wstring& name, std::wstring picture = {});

  /// From now on, answers each box after `milliseconds`, so that a person can read it.
  void AnswerAfter(unsigned milliseconds) { m_pause = milliseconds; }

  /// From now on, calls `action` with the names of pictures that are to be taken.
  void OnPicture(std::function<void(const std::wstring& name)> action) { m_onPicture = std::move(action); }

  /// From now on, calls `action` with the name of each button that a person presses.
  void OnAnswer(std::function<void(const std::wstring& button)> action) { m_onAnswer = std::move(action); }

  /// How many answers were not used by any box.
  std::size_t Left() const { return m_answers.size(); }

 private:
  struct Answer {
    int button;
    std::wstring picture;
  };

  void OnBox(HWND box);
  void GiveAnswer(HWND box);
  static LRESULT CALLBACK OnBoxMessage(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR answers);

  Journal& m_journal;
  std::deque<Answer> m_answers;
  std::function<void(const std::wstring& button)> m_onAnswer;
  std::function<void(const std::wstring& name)> m_onPicture;
  unsigned m_pause = 0;
  int m_listening = 0;
  message_boxes::MessageBoxHook m_hook;
};

}  // namespace cad_host
