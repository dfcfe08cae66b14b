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

constexpr UINT_PTR kAnswerTimer = 0xA;  // one that a message box does not use itself

const wchar_t* NameOf(int id) {
  for (const Button& button : kButtons) {
    if (button.id == id) return button.name;
  }
  return L"";
}

}  // namespace

MessageBoxAnswers::MessageBoxAnswers(Journal& journal)
    : m_journal(journal), m_hook([this](HWND box) { OnBox(box); }) {}

bool MessageBoxAnswers::Queue(const std::wstring& name, std::wstring picture) {
  for (const Button& button : kButtons) {
    if (name != button.name) continue;
    m_answers.push_back({button.id, std::move(picture)});
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
  const int answer = m_answers.front().button;
  const bool has_button = GetDlgItem(box, answer) != nullptr;
  m_journal.Note(line + (has_button ? L", answered " : L", has no button ") + NameOf(answer));
  if (m_pause == 0) return GiveAnswer(box);
  SetWindowSubclass(box, OnBoxMessage, 0, reinterpret_cast<DWORD_PTR>(this));
  SetTimer(box, kAnswerTimer, m_pause, nullptr);
}

void MessageBoxAnswers::GiveAnswer(HWND box) {
  const Answer answer = std::move(m_answers.front());
  m_answers.pop_front();
  if (!answer.picture.empty() && m_onPicture) m_onPicture(answer.picture);
  message_boxes::PressButton(box, answer.button);
}

LRESULT CALLBACK MessageBoxAnswers::OnBoxMessage(HWND box, UINT message, WPARAM wParam, LPARAM lParam,
                                                 UINT_PTR, DWORD_PTR answers) {
  auto* const self = reinterpret_cast<MessageBoxAnswers*>(answers);
  if (message == WM_TIMER && wParam == kAnswerTimer) {
    KillTimer(box, kAnswerTimer);
    RemoveWindowSubclass(box, OnBoxMessage, 0);  // what follows is no answer of a person
    self->GiveAnswer(box);
    return 0;
  }
  const std::wstring button = message == WM_COMMAND ? NameOf(LOWORD(wParam)) : L"";
  if (!button.empty() && self->m_onAnswer) self->m_onAnswer(button);
  return DefSubclassProc(box, message, wParam, lParam);
}

}  // namespace cad_host
