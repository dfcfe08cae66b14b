/// @file The window that a client has while no command waits.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "desk.h"
#include "virtual_list.h"
#include "window/font.h"
#include "window/gdi.h"
#include "window/texts.h"
#include "window/window.h"

namespace plm_window {

/// Shows what is in the vault, which commands came, and who is connected.
class MainWindow : public window::Window {
 public:
  MainWindow(const Options& options, const window::Texts& texts);

  /// The keys of the menu.
  HACCEL Accelerators() const { return m_accelerators.get(); }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void MakeMenu();
  window::UniqueMenu MakeFaultMenu() const;
  void MakeControls();
  void Place();
  void Refresh();
  void RefreshLog();
  void RefreshStatus();
  void OnCommand(int id, int code);
  void OnMenuItem(int id);
  void ChooseFault(int index);
  void CheckMenu();
  void OnTimer();
  std::wstring ItemCell(std::size_t row, std::size_t column) const;
  std::wstring LogCell(std::size_t row, std::size_t column) const;
  std::wstring FaultText(std::size_t index) const;

  const Options m_options;
  const window::Texts m_texts;
  window::UniqueFont m_font;
  window::UniqueAccelerators m_accelerators;
  std::vector<plm_vault::Item> m_items;
  std::optional<VirtualList> m_itemList;
  std::optional<VirtualList> m_logList;
  std::vector<std::wstring> m_status;
  std::chrono::steady_clock::time_point m_lastSeen = std::chrono::steady_clock::now();
  bool m_forAll = false;
  std::optional<Desk> m_desk;  // last: its threads tell this window of news
};

}  // namespace plm_window
