/// @file The base of the parts of the main window.
#pragma once

#include <windows.h>

#include "actions.h"
#include "cad_host/host.h"
#include "icons.h"
#include "window/dpi.h"
#include "window/font.h"
#include "window/gdi.h"
#include "window/texts.h"
#include "window/window.h"

namespace cad_host {

/// What the parts of the main window share. Fonts and icons are for the density `dpi`.
struct Desk {
  Host& host;
  Actions& actions;
  window::Texts texts;
  window::Dpi dpi;
  window::UniqueFont font;
  IconSet icons;  ///< of the host, small

  /// Makes font and icons for the density.
  void UseDpi(window::Dpi value);

  int Scale(int size) const { return dpi.Scale(size); }

  /// The height of a line of controls.
  int LineHeight() const { return Scale(24); }
};

/// A part of the main window. It lays out its controls when its size changes.
class Pane : public window::Window {
 public:
  explicit Pane(const Desk& desk) : m_desk(desk) {}

  /// Shows the state that the host has now.
  virtual void Refresh() = 0;

  /// Takes on the fonts and icons that the desk has now, and lays out the controls.
  virtual void TakeOnDensity();

 protected:
  /// Makes the pane as a child of `parent`.
  void CreatePane(HWND parent, const wchar_t* class_name, int id, HBRUSH background = nullptr);

  /// Places the controls in the pane, which has this size in pixels.
  virtual void Layout(SIZE size) = 0;

  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

  /// A control of the pane, in the desk's font.
  HWND Control(const wchar_t* class_name, int id, DWORD style, DWORD extended_style = 0,
               const wchar_t* text = L"") const;

  std::wstring Text(unsigned id) const { return m_desk.texts(id); }

  const Desk& m_desk;
};

/// Moves a control within its parent.
inline void Place(HWND control, int left, int top, int width, int height) {
  MoveWindow(control, left, top, width > 0 ? width : 0, height > 0 ? height : 0, TRUE);
}

}  // namespace cad_host
