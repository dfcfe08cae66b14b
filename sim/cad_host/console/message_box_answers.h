/// @file Answers to message boxes, given before they come up.
#pragma once

#include <windows.h>

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "cad_host/journal.h"

namespace cad_host {

/// Writes every message box of its thread into the journal and answers it with the next answer that was
/// queued; a box without one stays for the person. At most one object per thread.
class MessageBoxAnswers {
 public:
  explicit MessageBoxAnswers(Journal& journal);
  MessageBoxAnswers(const MessageBoxAnswers&) = delete;
  MessageBoxAnswers& operator=(const MessageBoxAnswers&) = delete;
  ~MessageBoxAnswers();

  /// Answers one more box with the button `name`: OK, Cancel, Yes, No, Retry, Abort or Ignore.
  /// @return false where there is no such button.
  bool Queue(const std::wstring& name);

  /// How many answers no box has asked for.
  std::size_t Left() const { return m_answers.size(); }

 private:
  static LRESULT CALLBACK OnHook(int code, WPARAM wparam, LPARAM lparam);
  static void CALLBACK OnTimer(HWND, UINT, UINT_PTR timer, DWORD);
  void OnBox(HWND box);

  Journal& m_journal;
  std::deque<int> m_answers;
  std::set<HWND> m_seen;    // a box may be activated more than once
  std::vector<HWND> m_new;  // activated, but without its texts yet
  HHOOK m_hook;
};

}  // namespace cad_host
