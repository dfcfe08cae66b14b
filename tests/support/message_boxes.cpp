#include "message_boxes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "CStringHelper.h"

namespace {
thread_local MessageBoxRecorder* recorder_of_thread = nullptr;

std::wstring WindowClass(HWND window) {
  wchar_t name[64];
  return {name, static_cast<std::size_t>(GetClassNameW(window, name, std::size(name)))};
}

std::wstring WindowText(HWND window) {
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

BOOL CALLBACK RecordChild(HWND child, LPARAM argument) {
  auto& box = *reinterpret_cast<RecordedMessageBox*>(argument);
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(child, GWL_STYLE));
  const std::wstring window_class = WindowClass(child);
  if (!(style & WS_VISIBLE)) return TRUE;
  if (window_class == L"Button") {
    box.buttons.push_back(GetDlgCtrlID(child));
  } else if (window_class == L"Static" && (style & SS_TYPEMASK) == SS_ICON) {
    box.icon = IconStyle(child);
  } else {
    box.text += WindowText(child);
  }
  return TRUE;
}

RecordedMessageBox Record(HWND window) {
  RecordedMessageBox box;
  box.caption = WindowText(window);
  EnumChildWindows(window, RecordChild, reinterpret_cast<LPARAM>(&box));
  const auto left = [window](int button) {
    RECT place{};
    GetWindowRect(GetDlgItem(window, button), &place);
    return place.left;
  };
  std::ranges::sort(box.buttons, {}, left);
  return box;
}
}  // namespace

MessageBoxRecorder::MessageBoxRecorder(std::initializer_list<int> answers)
    : m_answers(answers), m_hook(SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId())) {
  EXPECT_NE(m_hook, nullptr);
  EXPECT_EQ(recorder_of_thread, nullptr) << "one recorder of message boxes per thread";
  recorder_of_thread = this;
}

MessageBoxRecorder::~MessageBoxRecorder() {
  UnhookWindowsHookEx(m_hook);
  recorder_of_thread = nullptr;
  EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " expected message box(es) did not come up";
}

// A box is activated before it has its texts: it is looked at when it waits for its first message.
LRESULT CALLBACK MessageBoxRecorder::OnHook(int code, WPARAM wparam, LPARAM lparam) {
  MessageBoxRecorder* const recorder = recorder_of_thread;
  const auto window = reinterpret_cast<HWND>(wparam);
  if (recorder && code == HCBT_ACTIVATE && WindowClass(window) == L"#32770" &&
      recorder->m_open.insert(window).second) {
    recorder->m_new.push_back(window);
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
  }
  if (recorder && code == HCBT_DESTROYWND) recorder->m_open.erase(window);
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

void CALLBACK MessageBoxRecorder::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  MessageBoxRecorder* const recorder = recorder_of_thread;
  if (!recorder) return;
  for (HWND box : std::exchange(recorder->m_new, {})) {
    recorder->m_boxes.push_back(Record(box));
    recorder->m_look();
    recorder->Answer(box);
  }
}

// The answer is posted, so that the box meets it as it would meet a person's.
void MessageBoxRecorder::Answer(HWND box) {
  const RecordedMessageBox& recorded = m_boxes.back();
  const std::string shown = CStringHelper::UnicodeToUTF8(recorded.caption + L": " + recorded.text);
  if (m_answers.empty()) {
    ADD_FAILURE() << "unexpected message box: " << shown;
    EndDialog(box, IDCANCEL);
    return;
  }
  const int answer = m_answers.front();
  m_answers.pop_front();
  if (answer == kClose) {
    PostMessageW(box, WM_SYSCOMMAND, SC_CLOSE, 0);
  } else if (HWND button = GetDlgItem(box, answer)) {
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), reinterpret_cast<LPARAM>(button));
  } else {
    ADD_FAILURE() << "no button " << answer << " on message box: " << shown;
    EndDialog(box, IDCANCEL);
  }
}
