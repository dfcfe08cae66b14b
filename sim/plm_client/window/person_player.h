/// @file Does in a panel's window what a script says, step by step.
#pragma once

#include <functional>
#include <vector>

#include "panels/person_script.h"

namespace plm_window {

class PanelWindow;

/// The steps of one line of a person's script.
class PersonPlayer {
 public:
  /// @param panel must live as long as the player.
  PersonPlayer(PanelWindow& panel, plm_panels::PersonLine line);

  /// Does the next step. A step that fails is shown in the window, and the person has to go on.
  /// @return whether there is another step.
  bool Step();

 private:
  PanelWindow& m_panel;
  std::vector<std::function<void()>> m_steps;
  std::size_t m_next = 0;
};

}  // namespace plm_window
