// The controls of a panel's window.
#include "control_ids.h"
#include "panel_window.h"
#include "resource_ids.h"

namespace plm_window {

void PanelWindow::MakeControls() {
  const auto text = [this](unsigned id) { return m_texts(id); };
  window::MakeControl(Handle(), WC_STATICW, kTitleLabel, SS_LEFT, m_boldFont.get(), 0,
                      m_texts(m_panel->Title()).c_str());
  const std::wstring command(m_settings.command.begin(), m_settings.command.end());
  window::MakeControl(Handle(), WC_STATICW, kCommandLabel, SS_RIGHT | SS_ENDELLIPSIS, m_font.get(), 0,
                      (command + L"   " + m_settings.user).c_str());
  m_fields = std::make_unique<FieldControls>(Handle(), m_font.get(), *m_panel, text);
  m_fields->Show(m_panel->Fields());
  MakeLists();
  window::MakeControl(Handle(), WC_STATICW, kMessage, SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, m_font.get());
  MakeButtons();
  m_answerPart = std::make_unique<AnswerPart>(Handle(), m_font.get(), m_texts, m_settings.request,
                                              m_settings.refuses_faults,
                                              [this](const std::wstring& answer) { Finish(answer); });
}

void PanelWindow::MakeLists() {
  const std::vector<plm_panels::Column> wanted = m_panel->Columns();
  std::vector<VirtualList::Column> columns;
  columns.reserve(wanted.size());
  for (const plm_panels::Column& column : wanted) {
    columns.push_back({m_texts(column.label), column.width});
  }
  if (!columns.empty()) {
    m_rows.emplace(Handle(), kRowList, m_font.get(), m_panel->AllowsSeveralRows(), columns,
                   [this](std::size_t row, std::size_t column) { return m_panel->Cell(row, column); });
  }
  if (!HasDetails()) return;
  m_details.emplace(Handle(), kDetailList, m_font.get(), false,
                    std::vector<VirtualList::Column>{{m_texts(IDS_LABEL_PROPERTY), 80},
                                                     {m_texts(IDS_LABEL_VALUE), m_rows ? 130 : 500}},
                    [this](std::size_t row, std::size_t column) {
                      const auto& [name, value] = m_shownDetails.at(row);
                      return column == 0 ? name : value;
                    });
}

/// A panel with a list has details of its rows.
bool PanelWindow::HasDetails() const { return !m_panel->Columns().empty() || !m_panel->Details().empty(); }

void PanelWindow::MakeButtons() {
  m_actions = m_panel->Actions();
  for (std::size_t i = 0; i < m_actions.size(); ++i) {
    window::MakeControl(Handle(), WC_BUTTONW, kFirstAction + static_cast<int>(i),
                        WS_TABSTOP | BS_NOTIFY | (i == 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), m_font.get());
  }
  window::MakeControl(Handle(), WC_BUTTONW, IDCANCEL, WS_TABSTOP | BS_PUSHBUTTON, m_font.get(), 0,
                      m_texts(IDS_CANCEL).c_str());
}

}  // namespace plm_window
