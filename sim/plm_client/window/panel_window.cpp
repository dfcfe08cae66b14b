#include "panel_window.h"

#include <windowsx.h>

#include <algorithm>

#include "control_ids.h"
#include "layout_file.h"
#include "resource_ids.h"

namespace plm_window {

using plm_panels::Action;

namespace {

constexpr UINT_PTR kAutomaticTimer = 1;
constexpr UINT_PTR kPersonTimer = 2;
constexpr UINT kSecond = 1000;
constexpr COLORREF kFailureColour = RGB(192, 0, 0);
constexpr SIZE kSize{840, 620};
constexpr int kHeightWithoutLists = 340;

}  // namespace

PanelWindow::PanelWindow(std::unique_ptr<plm_panels::Panel> panel, const window::Texts& texts,
                         PanelWindowSettings settings)
    : m_panel(std::move(panel)), m_texts(texts), m_settings(std::move(settings)) {
  const window::Dpi dpi = window::Dpi::Of(nullptr);
  m_font = window::MessageFont(dpi);
  m_boldFont = window::MessageFont(dpi, true);
  Create({.class_name = L"PlmClientPanel",
          .title = m_texts(IDS_PANEL_TITLE, m_texts(m_panel->Title())),
          .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
          .extended_style = WS_EX_CONTROLPARENT,
          .size = {dpi.Scale(kSize.cx), dpi.Scale(HasDetails() ? kSize.cy : kHeightWithoutLists)}});
  MakeControls();
  Refresh();
  Place();
}

void PanelWindow::Present() {
  if (const auto automatic = m_panel->Automatic()) {
    m_secondsLeft = automatic->milliseconds / static_cast<int>(kSecond);
    SetTimer(Handle(), kAutomaticTimer, kSecond, nullptr);
    RefreshButtons();
  }
  CentreOnScreen();
  ShowWindow(Handle(), SW_SHOW);
  SetForegroundWindow(Handle());
  HWND first = m_fields->FirstEditable();
  if (!first && m_rows) first = m_rows->Handle();
  SetFocus(first ? first
                 : GetDlgItem(Handle(), m_actions.empty() ? IDCANCEL : static_cast<int>(kFirstAction)));
  WriteLayout();
}

void PanelWindow::CentreOnScreen() const {
  RECT area{}, place{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  GetWindowRect(Handle(), &place);
  const LONG x = area.left + (area.right - area.left - (place.right - place.left)) / 2;
  const LONG y = area.top + (area.bottom - area.top - (place.bottom - place.top)) / 2;
  SetWindowPos(Handle(), nullptr, std::max(area.left, x), std::max(area.top, y), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER);
}

void PanelWindow::Refresh() {
  m_fields->Show(m_panel->Fields());
  if (m_rows) {
    m_rows->Show(m_panel->RowCount());
    m_rows->Select(m_panel->Selection());
  }
  m_shownDetails = m_panel->Details();
  if (m_details) m_details->Show(m_shownDetails.size());
  RefreshButtons();
  m_answerPart->ShowPreview(m_panel->Preview(PreviewedAction()));
}

void PanelWindow::RefreshButtons() {
  m_actions = m_panel->Actions();
  for (std::size_t i = 0; i < m_actions.size(); ++i) {
    HWND button = GetDlgItem(Handle(), kFirstAction + static_cast<int>(i));
    const std::wstring text = ButtonText(m_actions[i]);
    if (window::TextOfWindow(button) != text) SetWindowTextW(button, text.c_str());
    EnableWindow(button, m_actions[i].is_enabled);
  }
}

std::wstring PanelWindow::ButtonText(const Action& action) const {
  const auto automatic = m_panel->Automatic();
  const bool counts_down = m_secondsLeft > 0 && automatic && automatic->name == action.name;
  return m_texts(action.label) + (counts_down ? L" (" + std::to_wstring(m_secondsLeft) + L")" : L"");
}

/// The action whose button has the focus, or the default.
std::wstring PanelWindow::PreviewedAction() const {
  if (std::ranges::count(m_actions, m_focusedAction, &Action::name) > 0) return m_focusedAction;
  return m_actions.empty() ? std::wstring() : m_actions.front().name;
}

void PanelWindow::EnterField(const std::wstring& name, const std::wstring& value) {
  m_fields->Enter(name, value);
}

void PanelWindow::SelectRows(const std::vector<std::wstring>& texts) {
  std::vector<std::size_t> rows;
  for (const std::wstring& text : texts) {
    const std::size_t columns = m_panel->Columns().size();
    std::size_t row = 0;
    const auto has_text = [&](std::size_t candidate) {
      for (std::size_t column = 0; column < columns; ++column) {
        if (m_panel->Cell(candidate, column) == text) return true;
      }
      return false;
    };
    while (row < m_panel->RowCount() && !has_text(row)) ++row;
    if (row == m_panel->RowCount()) throw plm_vault::VaultError(m_texts(IDS_NO_SUCH_ROW, text));
    rows.push_back(row);
  }
  m_panel->Select(std::move(rows));
  if (m_rows) SetFocus(m_rows->Handle());
  Refresh();
}

void PanelWindow::Press(const std::wstring& action) {
  if (action == L"cancel") {
    Finish({});
    return;
  }
  Do(action);
}

void PanelWindow::Do(const std::wstring& action) {
  const std::optional<std::wstring> answer = m_panel->Perform(action);
  if (!answer) {
    ShowMessage(m_panel->Message(), false);
    Refresh();
  } else if (m_answerPart->EditsFirst()) {
    m_answerPart->Offer(*answer);
    ShowMessage(m_texts(IDS_ANSWER_CAN_BE_EDITED), false);
  } else {
    Finish(*answer);
  }
}

void PanelWindow::Finish(const std::wstring& answer) {
  if (m_isFinished) return;
  m_isFinished = true;
  ShowWindow(Handle(), SW_HIDE);
  m_settings.answer(answer);
}

void PanelWindow::ShowMessage(const std::wstring& text, bool is_failure) {
  m_isFailure = is_failure;
  SetDlgItemTextW(Handle(), kMessage, text.c_str());
  InvalidateRect(GetDlgItem(Handle(), kMessage), nullptr, TRUE);
}

void PanelWindow::OnCommand(int id, int code) {
  if (id == IDCANCEL) {
    Finish({});
    return;
  }
  const int action = id - kFirstAction;
  if (action >= 0 && action < static_cast<int>(m_actions.size())) {
    const std::wstring name = m_actions[static_cast<std::size_t>(action)].name;
    if (code == BN_SETFOCUS) {
      m_focusedAction = name;
      m_answerPart->ShowPreview(m_panel->Preview(name));
    } else if (code == BN_CLICKED && IsWindowEnabled(GetDlgItem(Handle(), id))) {
      Do(name);
    }
    return;
  }
  m_fields->OnCommand(id, code, [this](const std::wstring& name, const std::wstring& value) {
    m_panel->SetField(name, value);
    Refresh();
  });
}

LRESULT PanelWindow::OnNotify(NMHDR& header) {
  for (std::optional<VirtualList>* list : {&m_rows, &m_details}) {
    if (!*list || header.hwndFrom != (*list)->Handle()) continue;
    if (header.code == NM_CUSTOMDRAW) return (*list)->OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    if ((*list)->OnNotify(header) && list == &m_rows) {
      m_panel->Select(m_rows->Selection());
      Refresh();
    }
  }
  const bool is_double_click = m_rows && header.hwndFrom == m_rows->Handle() && header.code == NM_DBLCLK;
  if (is_double_click && !m_panel->Selection().empty() && !m_actions.empty()) {
    PostMessageW(Handle(), WM_COMMAND, MAKEWPARAM(kFirstAction, BN_CLICKED), 0);
  }
  return 0;
}

void PanelWindow::Play(plm_panels::PersonLine line, std::chrono::milliseconds delay) {
  m_player.emplace(*this, std::move(line));
  SetTimer(Handle(), kPersonTimer, static_cast<UINT>(delay.count()), nullptr);
}

void PanelWindow::OnTimer(UINT_PTR timer) {
  if (m_isFinished) return;
  if (timer == kAutomaticTimer) {
    CountDown();
  } else if (timer == kPersonTimer && !m_player->Step()) {
    KillTimer(Handle(), kPersonTimer);
  }
}

void PanelWindow::CountDown() {
  --m_secondsLeft;
  RefreshButtons();
  if (m_secondsLeft > 0) return;
  KillTimer(Handle(), kAutomaticTimer);
  Do(m_panel->Automatic()->name);
}

LRESULT PanelWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (!m_answerPart) return Window::OnMessage(message, wparam, lparam);  // the controls are not there yet
  switch (message) {
    case WM_SIZE:
      Place();
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam));
      return 0;
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<NMHDR*>(lparam));
    case WM_TIMER:
      OnTimer(wparam);
      return 0;
    case WM_CLOSE:
      Finish({});
      return 0;
    case DM_GETDEFID:
      return MAKELONG(m_actions.empty() ? IDCANCEL : static_cast<int>(kFirstAction), DC_HASDEFID);
    case WM_GETMINMAXINFO: {
      const window::Dpi dpi = window::Dpi::Of(Handle());
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {dpi.Scale(720),
                                                               dpi.Scale(kHeightWithoutLists)};
      return 0;
    }
    case WM_CTLCOLORSTATIC:
      if (GetDlgCtrlID(reinterpret_cast<HWND>(lparam)) != kMessage || !m_isFailure) break;
      SetTextColor(reinterpret_cast<HDC>(wparam), kFailureColour);
      SetBkMode(reinterpret_cast<HDC>(wparam), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    default:
      break;
  }
  return Window::OnMessage(message, wparam, lparam);
}

void PanelWindow::WriteLayout() const {
  if (m_settings.layout_file.empty()) return;
  LayoutFile layout(m_settings.layout_file, window::TextOfWindow(Handle()));
  const std::vector<plm_panels::Field> fields = m_panel->Fields();
  for (std::size_t i = 0; i < fields.size(); ++i)
    layout.Add(L"field." + fields[i].name, m_fields->Control(i));
  if (m_rows) layout.Add(L"list", m_rows->Handle());
  if (m_details) layout.Add(L"details", m_details->Handle());
  for (std::size_t i = 0; i < m_actions.size(); ++i) {
    layout.Add(L"action." + m_actions[i].name, GetDlgItem(Handle(), kFirstAction + static_cast<int>(i)));
  }
  layout.Add(L"cancel", GetDlgItem(Handle(), IDCANCEL));
  layout.Add(L"request", GetDlgItem(m_answerPart->Handle(), kRequestText));
  layout.Add(L"answer", GetDlgItem(m_answerPart->Handle(), kAnswerText));
  layout.Add(L"edit-first", GetDlgItem(m_answerPart->Handle(), kEditFirst));
  layout.Add(L"send", GetDlgItem(m_answerPart->Handle(), kSend));
  layout.Write();
}

}  // namespace plm_window
