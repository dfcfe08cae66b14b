/// @file The base of the windows of the simulators.
#pragma once

#include <windows.h>

#include <string>

namespace window {

/// Owns a window of the system. Its messages go to OnMessage; an exception that leaves OnMessage goes to
/// OnError, because the system can pass none on.
class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  /// The window; null before Create and after it was destroyed.
  HWND Handle() const { return m_handle; }

 protected:
  struct Creation {
    const wchar_t* class_name = L"";  ///< also tells tools that look at windows what it is
    std::wstring title = {};
    DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;
    DWORD extended_style = 0;
    HWND parent = nullptr;
    int id = 0;  ///< of a child
    SIZE size = {};
    HBRUSH background = nullptr;  ///< null: the colour of dialogs
  };

  /// Makes the window. OnMessage gets the messages from the first one on.
  /// @throws std::runtime_error with the system's reason.
  void Create(const Creation& creation);

  /// Handles a message. What the class does not handle goes to this one, which does what the system does.
  virtual LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);

  /// Called with the text of an exception that has left OnMessage. This one shows an error box.
  virtual void OnError(const std::wstring& text);

 private:
  static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

  HWND m_handle = nullptr;
};

/// Makes a control of the system as the child `id` of `parent`, who destroys it. It writes in `font`.
/// @throws std::runtime_error with the system's reason.
HWND MakeControl(HWND parent, const wchar_t* class_name, int id, DWORD style, HFONT font,
                 DWORD extended_style = 0, const wchar_t* text = L"");

/// The text of a window or control.
std::wstring TextOfWindow(HWND handle);

/// The message of the exception that is being handled; must be called in a catch block.
std::wstring TextOfCaughtException();

}  // namespace window
