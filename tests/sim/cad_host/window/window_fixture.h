/// @file The window of the CAD host with the add-in and the PLM client.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "add_in_fixture.h"
#include "window/actions.h"
#include "window/main_window.h"
#include "window/message_loop.h"

/// A test shows the window itself. At the end the session ends as when a person closes the window.
class WindowTest : public AddInFixture {
 protected:
  static constexpr const wchar_t* kTitle = L"TAVO SolidWorks Integration";

  WindowTest();
  void TearDown() override;

  /// Shows the window. No add-in is connected unless the options say so.
  cad_host::MainWindow& Show(const cad_host::WindowOptions& options = {});

  /// Shows the window and connects the add-in.
  cad_host::MainWindow& ShowWithAddIn();

  /// Passes on the messages that are there, and asks enable methods as an idle host does.
  void PassOn();

  /// Does what the words say, then passes on messages.
  void Do(const std::vector<std::wstring>& words);

  /// Ends the session and the window, as a person does who leaves the host.
  void EndSession();

  cad_host::MainWindow& Window() { return *m_window; }
  cad_host::Actions& Actions() { return *m_actions; }

  /// The text of a cell of a list view.
  static std::wstring Cell(HWND list, int row, int column = 0);

  /// The texts of a column.
  static Texts Column(HWND list, int column = 0);

  /// A key that a person presses in a control.
  static void Press(HWND control, WPARAM key);

  std::ostringstream m_transcript;

 private:
  std::unique_ptr<cad_host::Actions> m_actions;
  std::unique_ptr<cad_host::MainWindow> m_window;
};
