/// @file The menu bar: the host's menus and those of add-ins.
#pragma once

#include <map>

#include "add_in_items.h"
#include "pane.h"

namespace cad_host {

class HostCommands;

/// Numbers of the entries of the menu of add-ins; the place of the add-in in Host::RegisteredAddIns follows.
inline constexpr UINT kFirstAddInEntry = 20000;

/// Numbers of the entries of the menu of quirks; the place in Quirks::All follows.
inline constexpr UINT kFirstQuirkEntry = 25000;

class MenuBar {
 public:
  MenuBar(const Desk& desk, const AddInItems& items, const HostCommands& commands)
      : m_desk(desk), m_items(items), m_commands(commands) {}

  /// Makes the menus anew and gives them to the main window.
  void Build(HWND main_window);

  /// Greys and checks the entries of a menu that is about to open.
  void Update(HMENU menu) const;

  /// Answers WM_MEASUREITEM and WM_DRAWITEM for the icon of an entry.
  void MeasureIcon(MEASUREITEMSTRUCT& measure) const;
  void DrawIcon(const DRAWITEMSTRUCT& drawing) const;

  HMENU Handle() const { return m_menu.get(); }

 private:
  void AddHostMenu(UINT text);
  void AddAddInMenus();
  void AddAddInList();
  void AddQuirkList();
  static void AddEntry(HMENU menu, UINT id, const std::wstring& text, bool has_icon);
  void UpdateEntry(HMENU menu, UINT id) const;

  const Desk& m_desk;
  const AddInItems& m_items;
  const HostCommands& m_commands;
  window::UniqueMenu m_menu;
  IconSet m_icons;
  std::map<UINT, int> m_iconPlaces;  // by the number of the entry
};

}  // namespace cad_host
