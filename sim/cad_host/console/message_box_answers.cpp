#include "message_box_answers.h"

#include <utility>

namespace cad_host {
namespace {

thread_local MessageBoxAnswers* answers_of_thread = nullptr;

constexpr const wchar_t* kDialogClass = L"#32770";

struct Button {
  const wchar_t* name;
  int id;
};
constexpr Button kButtons[] = {{L"OK", IDOK},        {L"Cancel", IDCANCEL}, {L"Yes", IDYES},
                               {L"No", IDNO},        {L"Retry", IDRETRY},   {L"Abort", IDABORT},
                               {L"Ignore", IDIGNORE}};

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

std::wstring TextOfWindow(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

BOOL CALLBACK AppendText(HWND child, LPARAM argument) {
  if (ClassOf(child) == L"Static") *reinterpret_cast<std::wstring*>(argument) += TextOfWindow(child);
  return TRUE;
}

const wchar_t* NameOf(int id) {
  for (const Button& button : kButtons) {
    if (button.id == id) return button.name;
  }
  return L"";
}

}  // namespace

MessageBoxAnswers::MessageBoxAnswers(Journal& journal)
    : m_journal(journal), m_hook(SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId())) {
  answers_of_thread = this;
}

MessageBoxAnswers::~MessageBoxAnswers() {
  UnhookWindowsHookEx(m_hook);
  answers_of_thread = nullptr;
}

bool MessageBoxAnswers::Queue(const std::wstring& name) {
  for (const Button& button : kButtons) {
    if (name != button.name) continue;
    m_answers.push_back(button.id);
    return true;
  }
  return false;
}

// A box is activated before it has its texts: it is looked at when it waits for its first message.
LRESULT CALLBACK MessageBoxAnswers::OnHook(int code, WPARAM wparam, LPARAM lparam) {
  MessageBoxAnswers* const answers = answers_of_thread;
  const auto window = reinterpret_cast<HWND>(wparam);
  if (answers && code == HCBT_ACTIVATE && ClassOf(window) == kDialogClass &&
      answers->m_seen.insert(window).second) {
    answers->m_new.push_back(window);
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
  }
  if (answers && code == HCBT_DESTROYWND) answers->m_seen.erase(window);
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

void CALLBACK MessageBoxAnswers::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  MessageBoxAnswers* const answers = answers_of_thread;
  if (!answers) return;
  for (HWND box : std::exchange(answers->m_new, {})) answers->OnBox(box);
}

void MessageBoxAnswers::OnBox(HWND box) {
  std::wstring text;
  EnumChildWindows(box, AppendText, reinterpret_cast<LPARAM>(&text));
  const std::wstring line = L"message box \"" + TextOfWindow(box) + L"\": \"" + text + L"\"";
  if (m_answers.empty()) return m_journal.Note(line + L", left to the person");
  const int answer = m_answers.front();
  m_answers.pop_front();
  HWND button = GetDlgItem(box, answer);
  if (!button) return m_journal.Note(line + L", has no button " + NameOf(answer));
  m_journal.Note(line + L", answered " + NameOf(answer));
  PostMessageW(box, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

}  // namespace cad_host
