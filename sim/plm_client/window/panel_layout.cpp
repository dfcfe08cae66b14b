// Where the controls of a panel's window lie.
#include <algorithm>

#include "control_ids.h"
#include "panel_window.h"
#include "window/dpi.h"

namespace plm_window {
namespace {

constexpr int kMargin = 12;
constexpr int kGap = 8;
constexpr int kLineHeight = 20;
constexpr int kButtonHeight = 27;
constexpr int kButtonPadding = 14;
constexpr int kLeastButtonWidth = 84;
constexpr int kAnswerHeight = 172;
constexpr int kRowsShare = 71;  // of the width, in percent

}  // namespace

void PanelWindow::Place() {
  RECT client{};
  GetClientRect(Handle(), &client);
  const window::Dpi dpi = window::Dpi::Of(Handle());
  const int margin = dpi.Scale(kMargin), gap = dpi.Scale(kGap), line = dpi.Scale(kLineHeight);
  const int left = margin, right = client.right - margin, width = right - left;
  int top = margin;
  const int title = static_cast<int>(
      window::SizeOfText(m_boldFont.get(), window::TextOfWindow(GetDlgItem(Handle(), kTitleLabel))).cx);
  MoveWindow(GetDlgItem(Handle(), kTitleLabel), left, top, title + gap, line, TRUE);
  MoveWindow(GetDlgItem(Handle(), kCommandLabel), left + title + gap * 2, top, width - title - gap * 2, line,
             TRUE);
  top += line + gap;
  top += m_fields->Place(left, top, width, dpi);
  const int buttons_and_message = dpi.Scale(kButtonHeight) + gap + line;
  if (m_details) {
    const int bottom = std::max(top + line, static_cast<int>(client.bottom) - margin -
                                                dpi.Scale(kAnswerHeight) - gap - buttons_and_message);
    PlaceLists(top, bottom, left, right);
    top = bottom + gap / 2;
  }
  MoveWindow(GetDlgItem(Handle(), kMessage), left, top, width, line, TRUE);
  top += line;
  PlaceButtons(top, left, right);
  top += dpi.Scale(kButtonHeight) + gap;
  MoveWindow(m_answerPart->Handle(), left, top, width,
             std::max(0, static_cast<int>(client.bottom) - margin - top), TRUE);
}

void PanelWindow::PlaceLists(int top, int bottom, int left, int right) {
  const int gap = window::Dpi::Of(Handle()).Scale(kGap);
  const int details_left = m_rows ? left + (right - left) * kRowsShare / 100 + gap : left;
  if (m_rows) MoveWindow(m_rows->Handle(), left, top, details_left - gap - left, bottom - top, TRUE);
  MoveWindow(m_details->Handle(), details_left, top, right - details_left, bottom - top, TRUE);
}

/// The actions from the left, Cancel at the right.
void PanelWindow::PlaceButtons(int top, int left, int right) {
  const window::Dpi dpi = window::Dpi::Of(Handle());
  const int gap = dpi.Scale(kGap), height = dpi.Scale(kButtonHeight);
  const auto width_of = [&](int id) {
    const std::wstring text = window::TextOfWindow(GetDlgItem(Handle(), id));
    const int text_width = static_cast<int>(window::SizeOfText(m_font.get(), text).cx);
    return std::max(dpi.Scale(kLeastButtonWidth), text_width + dpi.Scale(kButtonPadding) * 2);
  };
  int x = left;
  for (int id = kFirstAction; id < kFirstAction + static_cast<int>(m_actions.size()); ++id) {
    const int width = width_of(id);
    MoveWindow(GetDlgItem(Handle(), id), x, top, width, height, TRUE);
    x += width + gap;
  }
  const int cancel_width = width_of(IDCANCEL);
  MoveWindow(GetDlgItem(Handle(), IDCANCEL), right - cancel_width, top, cancel_width, height, TRUE);
}

}  // namespace plm_window
