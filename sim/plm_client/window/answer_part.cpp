#include "answer_part.h"

#include <windowsx.h>

#include "control_ids.h"
#include "panels/json_for_people.h"
#include "resource_ids.h"
#include "window/dpi.h"

namespace plm_window {
namespace {

constexpr COLORREF kFaultColour = RGB(192, 0, 0);
constexpr int kGap = 8;
constexpr int kLineHeight = 20;
constexpr int kButtonHeight = 26;

/// Edit controls want a carriage return before each line feed.
std::wstring ForEditControl(const std::wstring& text) {
  std::wstring lines;
  for (const wchar_t character : text) {
    if (character == L'\n' && !lines.ends_with(L'\r')) lines += L'\r';
    lines += character;
  }
  return lines;
}

std::wstring FromEditControl(std::wstring text) {
  std::erase(text, L'\r');
  return text;
}

}  // namespace

AnswerPart::AnswerPart(HWND parent, HFONT font, const window::Texts& texts, const std::wstring& request,
                       std::function<bool()> is_checked, Sender send)
    : m_isChecked(std::move(is_checked)), m_send(std::move(send)) {
  Create({.class_name = L"PlmClientAnswerPart",
          .extended_style = WS_EX_CONTROLPARENT,
          .parent = parent,
          .id = kAnswerPart});
  MakeControls(font, texts, request);
}

void AnswerPart::MakeControls(HFONT font, const window::Texts& texts, const std::wstring& request) {
  const auto make = [&](const wchar_t* kind, int id, DWORD style, DWORD extended, const std::wstring& text) {
    return window::MakeControl(Handle(), kind, id, style, font, extended, text.c_str());
  };
  constexpr DWORD kEditor = WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL;
  make(WC_STATICW, kRequestLabel, SS_LEFT, 0, texts(IDS_REQUEST));
  make(WC_EDITW, kRequestText, kEditor | ES_READONLY, WS_EX_CLIENTEDGE, ForEditControl(request));
  make(WC_STATICW, kAnswerLabel, SS_LEFT, 0, texts(IDS_ANSWER));
  make(WC_EDITW, kAnswerText, kEditor | ES_READONLY | ES_WANTRETURN, WS_EX_CLIENTEDGE, L"");
  make(WC_STATICW, kFault, SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, 0, L"");
  make(WC_BUTTONW, kEditFirst, WS_TABSTOP | BS_AUTOCHECKBOX, 0, texts(IDS_EDIT_FIRST));
  make(WC_BUTTONW, kSend, WS_TABSTOP | BS_PUSHBUTTON | WS_DISABLED, 0, texts(IDS_SEND));
}

void AnswerPart::Place(int width, int height) const {
  const window::Dpi dpi = window::Dpi::Of(Handle());
  const int gap = dpi.Scale(kGap), line = dpi.Scale(kLineHeight), button = dpi.Scale(kButtonHeight);
  const int half = (width - gap) / 2, right = half + gap;
  const auto move = [this](int id, int x, int y, int w, int h) {
    MoveWindow(GetDlgItem(Handle(), id), x, y, w, h, TRUE);
  };
  const int send_width = dpi.Scale(96);
  const int editor_height = height - line - line - button;
  move(kRequestLabel, 0, 0, half, line);
  move(kRequestText, 0, line, half, height - line);
  move(kAnswerLabel, right, 0, half, line);
  move(kAnswerText, right, line, half, editor_height);
  move(kFault, right, line + editor_height + dpi.Scale(2), half, line - dpi.Scale(2));
  move(kEditFirst, right, height - button, half - send_width - gap, button);
  move(kSend, width - send_width, height - button, send_width, button);
}

void AnswerPart::ShowPreview(const std::wstring& json) {
  if (!EditsFirst()) {
    m_isFilling = true;
    SetDlgItemTextW(Handle(), kAnswerText, ForEditControl(json).c_str());
    m_isFilling = false;
  }
}

void AnswerPart::Offer(const std::wstring& json) {
  SetDlgItemTextW(Handle(), kAnswerText, ForEditControl(json).c_str());
  SetFocus(GetDlgItem(Handle(), kAnswerText));
}

bool AnswerPart::EditsFirst() const { return IsDlgButtonChecked(Handle(), kEditFirst) == BST_CHECKED; }

bool AnswerPart::Send() {
  const std::wstring text = window::TextOfWindow(GetDlgItem(Handle(), kAnswerText));
  const auto fault = plm_panels::FaultOfAnswer(text);
  if (fault && m_isChecked()) {
    ShowFault(fault->Description());
    HWND editor = GetDlgItem(Handle(), kAnswerText);
    SetFocus(editor);
    Edit_SetSel(editor, fault->offset, fault->offset);
    Edit_ScrollCaret(editor);
    return false;
  }
  m_send(FromEditControl(text));
  return true;
}

void AnswerPart::SetEditable(bool editable) const {
  Edit_SetReadOnly(GetDlgItem(Handle(), kAnswerText), !editable);
  EnableWindow(GetDlgItem(Handle(), kSend), editable);
}

void AnswerPart::ShowFault(const std::wstring& text) {
  if (m_fault == text) return;
  m_fault = text;
  SetDlgItemTextW(Handle(), kFault, text.c_str());
}

void AnswerPart::OnCommand(int id, int code) {
  if (id == kEditFirst && code == BN_CLICKED) {
    SetEditable(EditsFirst());
    if (EditsFirst()) SetFocus(GetDlgItem(Handle(), kAnswerText));
  } else if (id == kSend && code == BN_CLICKED) {
    Send();
  } else if (id == kAnswerText && code == EN_CHANGE && !m_isFilling) {
    const auto fault = plm_panels::FaultOfAnswer(window::TextOfWindow(GetDlgItem(Handle(), kAnswerText)));
    ShowFault(fault ? fault->Description() : L"");
  }
}

LRESULT AnswerPart::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      Place(LOWORD(lparam), HIWORD(lparam));
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam));
      return 0;
    case WM_CTLCOLORSTATIC:
      if (GetDlgCtrlID(reinterpret_cast<HWND>(lparam)) != kFault) break;
      SetTextColor(reinterpret_cast<HDC>(wparam), kFaultColour);
      SetBkMode(reinterpret_cast<HDC>(wparam), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    default:
      break;
  }
  return Window::OnMessage(message, wparam, lparam);
}

}  // namespace plm_window
