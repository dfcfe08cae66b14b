/// @file The window of one command of the host.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "answer_part.h"
#include "field_controls.h"
#include "panels/panel.h"
#include "person_player.h"
#include "virtual_list.h"
#include "window/font.h"
#include "window/texts.h"
#include "window/window.h"

namespace plm_window {

/// What a panel's window is made for and with.
struct PanelWindowSettings {
  std::string command;   ///< such as QD_PLMLogin
  std::wstring request;  ///< for people
  std::wstring user;
  std::function<bool()> refuses_faults;                    ///< whether an answer with a fault is not sent
  std::function<void(const std::wstring& answer)> answer;  ///< called once; empty: the person chose nothing
  std::function<void(const std::wstring& name)> take_picture{};  ///< of the display
  std::wstring layout_file{};  ///< where the places of the controls are written
};

/// Shows a panel, lets the person choose, and answers. The answer comes when the window is gone or about to
/// go.
class PanelWindow : public window::Window {
 public:
  PanelWindow(std::unique_ptr<plm_panels::Panel> panel, const window::Texts& texts,
              PanelWindowSettings settings);

  /// Shows the window in front of all others.
  void Present();

  /// What a person does: fills a field in, selects the rows that have one of the texts in a cell, presses a
  /// button.
  /// @throws plm_vault::VaultError if there is no such field, row or button, or it is disabled.
  void EnterField(const std::wstring& name, const std::wstring& value);
  void SelectRows(const std::vector<std::wstring>& texts);
  void Press(const std::wstring& action);

  /// Has a picture of the display taken.
  void TakePicture(const std::wstring& name) const {
    if (m_settings.take_picture) m_settings.take_picture(name);
  }

  /// Does what the line says, one step after each delay.
  void Play(plm_panels::PersonLine line, std::chrono::milliseconds delay);

  /// Tells the person something, in red if it is a failure.
  void ShowMessage(const std::wstring& text, bool is_failure);

  const plm_panels::Panel& Panel() const { return *m_panel; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void OnError(const std::wstring& text) override { ShowMessage(text, true); }

 private:
  void MakeControls();
  void CentreOnScreen() const;
  bool HasDetails() const;
  void MakeLists();
  void MakeButtons();
  void Place();
  void PlaceLists(int top, int bottom, int left, int right);
  void PlaceButtons(int top, int left, int right);
  void Refresh();
  void RefreshButtons();
  void OnCommand(int id, int code);
  LRESULT OnNotify(NMHDR& header);
  void OnTimer(UINT_PTR timer);
  void CountDown();
  void Do(const std::wstring& action);
  void Finish(const std::wstring& answer);
  void WriteLayout() const;
  std::wstring PreviewedAction() const;
  std::wstring ButtonText(const plm_panels::Action& action) const;

  std::unique_ptr<plm_panels::Panel> m_panel;
  window::Texts m_texts;
  PanelWindowSettings m_settings;
  window::UniqueFont m_font;
  window::UniqueFont m_boldFont;
  std::unique_ptr<FieldControls> m_fields;
  std::optional<VirtualList> m_rows;
  std::optional<VirtualList> m_details;
  std::unique_ptr<AnswerPart> m_answerPart;
  std::vector<plm_panels::Action> m_actions;
  plm_vault::Properties m_shownDetails;
  std::wstring m_focusedAction;  // whose answer is shown
  std::optional<PersonPlayer> m_player;
  int m_secondsLeft = 0;  // until the panel acts by itself
  bool m_isFailure = false;
  bool m_isFinished = false;
};

}  // namespace plm_window
