/// @file Answers for message boxes, prepared before the boxes are shown.
#pragma once

#include <windows.h>

#include <cstddef>
#include <deque>
#include <string>

#include "cad_host/journal.h"
#include "message_boxes/message_box_hook.h"

namespace cad_host {

/// Writes every message box of its thread into the journal and answers it with the next answer that was
/// queued; a box without an answer stays open for the person. At most one object per thread.
class MessageBoxAnswers {
 public:
  explicit MessageBoxAnswers(Journal& journal);

  /// Answers one more box with the button `name`: OK, Cancel, Yes, No, Retry, Abort or Ignore.
  /// @return false if there is no such button.
  bool Queue(const std::wstring& name);

  /// How many answers were not used by any box.
  std::size_t Left() const { return m_answers.size(); }

 private:
  void OnBox(HWND box);

  Journal& m_journal;
  std::deque<int> m_answers;
  message_boxes::MessageBoxHook m_hook;
};

}  // namespace cad_host
