#include "message_boxes/message_box_hook.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace message_boxes {
namespace {

thread_local MessageBoxHook* hook_of_thread = nullptr;

constexpr const wchar_t* kDialogClass = L"#32770";

std::wstring ClassOf(HWND window) {
  wchar_t name[64];
  return {name, static_cast<std::size_t>(GetClassNameW(window, name, static_cast<int>(std::size(name))))};
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// Message boxes show the system's shared icons.
UINT IconStyle(HWND icon_window) {
  const auto icon = reinterpret_cast<HICON>(SendMessageW(icon_window, STM_GETICON, 0, 0));
  const std::pair<LPCWSTR, UINT> icons[] = {{IDI_ERROR, MB_ICONERROR},
                                            {IDI_QUESTION, MB_ICONQUESTION},
                                            {IDI_WARNING, MB_ICONWARNING},
                                            {IDI_INFORMATION, MB_ICONINFORMATION}};
  for (const auto& [name, style] : icons) {
    if (icon == LoadIconW(nullptr, name)) return style;
  }
  return 0;
}

BOOL CALLBACK ReadChild(HWND child, LPARAM argument) {
  auto& content = *reinterpret_cast<MessageBoxContent*>(argument);
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(child, GWL_STYLE));
  if (!(style & WS_VISIBLE)) return TRUE;
  const std::wstring window_class = ClassOf(child);
  if (window_class == L"Button") {
    content.buttons.push_back(GetDlgCtrlID(child));
  } else if (window_class == L"Static" && (style & SS_TYPEMASK) == SS_ICON) {
    content.icon = IconStyle(child);
  } else if (window_class == L"Static") {
    content.text += TextOf(child);
  }
  return TRUE;
}

}  // namespace

MessageBoxContent ReadMessageBox(HWND box) {
  MessageBoxContent content;
  content.caption = TextOf(box);
  content.owner = GetWindow(box, GW_OWNER);
  EnumChildWindows(box, ReadChild, reinterpret_cast<LPARAM>(&content));
  const auto left = [box](int button) {
    RECT place{};
    GetWindowRect(GetDlgItem(box, button), &place);
    return place.left;
  };
  std::ranges::sort(content.buttons, {}, left);
  return content;
}

bool PressButton(HWND box, int button) {
  HWND window = GetDlgItem(box, button);
  if (!window) return false;
  PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(window));
  return true;
}

void CloseMessageBox(HWND box) { PostMessageW(box, WM_SYSCOMMAND, SC_CLOSE, 0); }

MessageBoxHook::MessageBoxHook(std::function<void(HWND box)> on_box) : m_onBox(std::move(on_box)) {
  if (hook_of_thread) throw std::logic_error("the thread has a hook for message boxes already");
  m_hook = SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId());
  if (!m_hook) throw std::runtime_error("the hook for message boxes cannot be installed");
  hook_of_thread = this;
}

MessageBoxHook::~MessageBoxHook() {
  UnhookWindowsHookEx(m_hook);
  hook_of_thread = nullptr;
}

// A box is activated before it has its texts. The timer expires when the box waits for its first message.
LRESULT CALLBACK MessageBoxHook::OnHook(int code, WPARAM wparam, LPARAM lparam) {
  MessageBoxHook* const hook = hook_of_thread;
  const auto window = reinterpret_cast<HWND>(wparam);
  if (hook && code == HCBT_ACTIVATE && ClassOf(window) == kDialogClass &&
      hook->m_open.insert(window).second) {
    hook->m_new.push_back(window);
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
  }
  if (hook && code == HCBT_DESTROYWND) hook->m_open.erase(window);
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

void CALLBACK MessageBoxHook::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  MessageBoxHook* const hook = hook_of_thread;
  if (!hook) return;
  for (HWND box : std::exchange(hook->m_new, {})) hook->m_onBox(box);
}

}  // namespace message_boxes
