#include "message_boxes.h"

#include <gtest/gtest.h>

#include <string>

#include "CStringHelper.h"

MessageBoxRecorder::MessageBoxRecorder(std::initializer_list<int> answers)
    : m_answers(answers), m_hook([this](HWND box) { OnBox(box); }) {}

MessageBoxRecorder::~MessageBoxRecorder() {
  EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " expected message box(es) did not come up";
}

void MessageBoxRecorder::OnBox(HWND box) {
  m_boxes.push_back(message_boxes::ReadMessageBox(box));
  const std::string shown =
      CStringHelper::UnicodeToUTF8(m_boxes.back().caption + L": " + m_boxes.back().text);
  m_look();
  if (m_answers.empty()) {
    ADD_FAILURE() << "unexpected message box: " << shown;
    EndDialog(box, IDCANCEL);
    return;
  }
  const int answer = m_answers.front();
  m_answers.pop_front();
  if (Answer(box, answer)) return;
  ADD_FAILURE() << "no button " << answer << " on message box: " << shown;
  EndDialog(box, IDCANCEL);
}

bool MessageBoxRecorder::Answer(HWND box, int answer) {
  if (answer != kClose) return message_boxes::PressButton(box, answer);
  message_boxes::CloseMessageBox(box);
  return true;
}
