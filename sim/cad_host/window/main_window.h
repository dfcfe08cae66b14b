/// @file The main window of the CAD host.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "actions.h"
#include "add_in_items.h"
#include "command_bar.h"
#include "component_tree.h"
#include "document_tabs.h"
#include "frame_layout.h"
#include "host_commands.h"
#include "journal_pane.h"
#include "menu_bar.h"
#include "model_view.h"
#include "options.h"
#include "pane.h"
#include "pick_point.h"
#include "property_table.h"
#include "script_player.h"
#include "window/window.h"

namespace cad_host {

class MainWindow : public window::Window {
 public:
  /// Makes and shows the window. Add-ins are connected and the script of the options is played when messages
  /// are passed on.
  MainWindow(Host& host, Actions& actions, const WindowOptions& options);

  /// Must be called when all messages have been passed on: asks enable methods when something has happened.
  void OnIdle();

  /// 0; 1 if an expectation failed; 2 if the script could not be run to its end.
  int ExitCode() const;

  // For tests.
  const AddInItems& Items() const { return m_items; }
  const MenuBar& Menus() const { return m_menus; }
  CommandBar& Commands() { return *m_commandBar; }
  ComponentTree& Tree() { return *m_tree; }
  PropertyTable& Properties() { return *m_properties; }
  JournalPane& Journal() { return *m_journal; }
  ModelView& View() { return *m_view; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void OnError(const std::wstring& text) override;

 private:
  void MakePanes();
  void Start();
  void ConnectAtStart();
  void PlayScript(const std::wstring& path);
  void PlayLine();
  void EndScript();
  void Refresh();
  void ComeBack() const;
  void UpdateStates();
  void Arrange();
  FrameLayout::Measures Measure() const;
  void OnEnter();
  void OnCommand(UINT id);
  void Pick(const AddInItem& item);
  void OnMouse(UINT message, POINT place);
  void OnDensity(int dpi, const RECT& place);
  void Close();
  void ShowHint(UINT command);
  void ShowStatus(const std::wstring& text) const;

  const WindowOptions m_options;
  Desk m_desk;
  AddInItems m_items;
  HostCommands m_hostCommands;
  MenuBar m_menus;
  ScriptPlayer m_player;
  FrameLayout m_layout;
  std::optional<FrameLayout::Edge> m_dragged;
  std::unique_ptr<CommandBar> m_commandBar;
  std::unique_ptr<DocumentTabs> m_documentTabs;
  std::unique_ptr<ComponentTree> m_tree;
  std::unique_ptr<PickPoint> m_pickPoint;
  std::unique_ptr<ModelView> m_view;
  std::unique_ptr<PropertyTable> m_properties;
  std::unique_ptr<JournalPane> m_journal;
  HWND m_statusBar = nullptr;
  HWND m_focus = nullptr;  // the control that had the focus when another window became active
  bool m_isStale = false;  // something has happened since the enable methods were asked
  bool m_isPlaying = false;
  bool m_scriptFailed = false;
};

}  // namespace cad_host
