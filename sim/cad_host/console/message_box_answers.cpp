#include "message_box_answers.h"

#include <commctrl.h>

namespace cad_host {
namespace {

struct Button {
  const wchar_t* name;
  int id;
};
constexpr Button kButtons[] = {{L"OK", IDOK},        {L"Cancel", IDCANCEL}, {L"Yes", IDYES},
                               {L"No", IDNO},        {L"Retry", IDRETRY},   {L"Abort", IDABORT},
                               {L"Ignore", IDIGNORE}};

const wchar_t* NameOf(int id) {
  for (const Button& button : kButtons) {
    if (button.id == id) return button.name;
  }
  return L"";
}

}  // namespace

MessageBoxAnswers::MessageBoxAnswers(Journal& journal)
    : m_journal(journal), m_hook([this](HWND box) { OnBox(box); }) {}

bool MessageBoxAnswers::Queue(const std::wstring& name) {
  for (const Button& button : kButtons) {
    if (name != button.name) continue;
    m_answers.push_back(button.id);
    return true;
  }
  return false;
}

void MessageBoxAnswers::OnBox(HWND box) {
  if (m_listening == 0) return;
  const message_boxes::MessageBoxContent content = message_boxes::ReadMessageBox(box);
  const std::wstring line = L"message box \"" + content.caption + L"\": \"" + content.text + L"\"";
  if (m_answers.empty()) {
    SetWindowSubclass(box, OnBoxMessage, 0, reinterpret_cast<DWORD_PTR>(this));
    return m_journal.Note(line + L", left to the person");
  }
  const int answer = m_answers.front();
  m_answers.pop_front();
  const bool pressed = message_boxes::PressButton(box, answer);
  m_journal.Note(line + (pressed ? L", answered " : L", has no button ") + NameOf(answer));
}

LRESULT CALLBACK MessageBoxAnswers::OnBoxMessage(HWND box, UINT message, WPARAM wParam, LPARAM lParam,
                                                 UINT_PTR, DWORD_PTR answers) {
  const auto* const self = reinterpret_cast<const MessageBoxAnswers*>(answers);
  const std::wstring button = message == WM_COMMAND ? NameOf(LOWORD(wParam)) : L"";
  if (!button.empty() && self->m_onAnswer) self->m_onAnswer(button);
  return DefSubclassProc(box, message, wParam, lParam);
}

}  // namespace cad_host
