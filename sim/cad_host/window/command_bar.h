/// @file The toolbars and the command tabs.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "add_in_items.h"
#include "pane.h"

namespace cad_host {

class HostCommands;

/// Above a toolbar with the host's commands and those of add-ins, below it the command tabs for the type of
/// the active document. A button sends its command to the main window.
class CommandBar : public Pane {
 public:
  /// What it tells the main window.
  struct Events {
    std::function<void(UINT command)> show_hint;  ///< for the command under the mouse; 0: none is
    std::function<void()> rearrange;              ///< the tab in front has changed, and with it the height
  };

  CommandBar(const Desk& desk, HWND parent, int id, const AddInItems& items, const HostCommands& commands,
             Events events);

  /// Makes tabs and buttons anew if the type of the document or the tabs have changed.
  void Refresh() override;
  void TakeOnDensity() override;

  /// Makes tabs and buttons anew.
  void Rebuild();

  /// Greys and presses the buttons.
  void UpdateStates();

  /// The height that the bars need if they are `width` pixels wide.
  int HeightFor(int width) const;

  HWND Toolbar() const { return m_toolbar; }
  HWND Tabs() const { return m_tabs; }
  HWND Ribbon() const { return m_ribbon; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  HWND MakeToolbar(int id, DWORD style) const;
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam);
  void GiveToolTip(NMTTDISPINFOW& tip) const;
  std::map<const CommandGroup*, int> LoadIcons(IconSet& set, int size, bool large) const;
  void FillToolbar();
  void FillTabs();
  void FillRibbon();
  void AddButton(HWND bar, UINT command, int icon, bool with_text) const;
  void AddSeparator(HWND bar) const;
  void UpdateStates(HWND bar) const;
  bool HasCommands(const CommandTab& tab) const;
  std::vector<const CommandTab*> ShownTabs() const;
  std::wstring TextOf(UINT command) const;
  std::wstring Shape() const;

  const AddInItems& m_items;
  const HostCommands& m_commands;
  Events m_events;
  HWND m_toolbar = nullptr;
  HWND m_tabs = nullptr;
  HWND m_ribbon = nullptr;
  IconSet m_smallIcons;
  IconSet m_largeIcons;
  std::map<const CommandGroup*, int> m_smallPlaces;  // of a group's first icon in the list
  std::map<const CommandGroup*, int> m_largePlaces;
  std::wstring m_chosen;  // the name of the tab that is in front; empty: the person has not chosen one
  std::wstring m_shape;   // what tabs and buttons were made for
};

}  // namespace cad_host
