#include "person_player.h"

#include <string_view>

#include "panel_window.h"

namespace plm_window {
namespace {

constexpr std::wstring_view kPicture = L"picture";  // is no field of a panel

}  // namespace

PersonPlayer::PersonPlayer(PanelWindow& panel, plm_panels::PersonLine line) : m_panel(panel) {
  for (auto& choice : line.choices) {
    m_steps.emplace_back([this, choice = std::move(choice)] {
      if (choice.field.empty()) {
        m_panel.SelectRows(choice.rows);
      } else if (choice.field == kPicture) {
        m_panel.TakePicture(choice.value);
      } else {
        m_panel.EnterField(choice.field, choice.value);
      }
    });
  }
  for (auto& action : line.actions) {
    m_steps.emplace_back([this, action = std::move(action)] { m_panel.Press(action); });
  }
}

bool PersonPlayer::Step() {
  try {
    m_steps.at(m_next++)();
  } catch (const plm_vault::VaultError& failure) {
    m_panel.ShowMessage(failure.Message(), true);
    m_next = m_steps.size();
  }
  return m_next < m_steps.size();
}

}  // namespace plm_window
