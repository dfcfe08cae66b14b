/// @file Watches the message boxes of a thread, reads and answers them.
#pragma once

#include <windows.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace message_boxes {

/// What a message box shows.
struct MessageBoxContent {
  std::wstring text;
  std::wstring caption;
  UINT icon = 0;             ///< MB_ICONERROR and so on; 0 if there is no icon
  std::vector<int> buttons;  ///< ids such as IDOK, from left to right
  HWND owner = nullptr;      ///< the window that owns the box; null without one
};

/// Reads what the message box `box` shows now.
MessageBoxContent ReadMessageBox(HWND box);

/// Presses a button of the message box as a person does: by a message that the box handles later.
/// @return false if the box has no button with the id `button`.
bool PressButton(HWND box, int button);

/// Closes the message box by its system menu, as Alt+F4 does; the box handles that later.
void CloseMessageBox(HWND box);

/// Calls a function for each new message box of the thread that created the object. At most one object per
/// thread.
class MessageBoxHook {
 public:
  /// @param on_box called on the same thread with the window of the box, when the box is complete and waits
  ///        for its first message.
  /// @throws std::logic_error if the thread has a hook already.
  /// @throws std::runtime_error if the system does not install the hook.
  explicit MessageBoxHook(std::function<void(HWND box)> on_box);
  MessageBoxHook(const MessageBoxHook&) = delete;
  MessageBoxHook& operator=(const MessageBoxHook&) = delete;
  ~MessageBoxHook();

 private:
  static LRESULT CALLBACK OnHook(int code, WPARAM wparam, LPARAM lparam);
  static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timer, DWORD time);

  std::function<void(HWND box)> m_onBox;
  std::set<HWND> m_open;    // a box may be activated more than once
  std::vector<HWND> m_new;  // activated, but without its texts yet
  HHOOK m_hook = nullptr;
};

}  // namespace message_boxes
