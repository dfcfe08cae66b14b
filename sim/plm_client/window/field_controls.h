/// @file The fields of a panel, as controls.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "panels/panel.h"
#include "window/dpi.h"

namespace plm_window {

/// A label and a control for each field, in two columns where there are several.
class FieldControls {
 public:
  /// Makes the controls as children of `parent`, who passes on their WM_COMMAND.
  FieldControls(HWND parent, HFONT font, const plm_panels::Panel& panel, const plm_panels::TextSource& text);

  /// Puts the fields' values and choices into the controls, where they differ.
  void Show(const std::vector<plm_panels::Field>& fields);

  /// Places the controls into a strip of this width. @return the strip's height.
  int Place(int x, int y, int width, window::Dpi dpi) const;

  /// Handles a WM_COMMAND. @return whether a field got another value through the person; then `changed` was
  /// called with its name and value.
  bool OnCommand(int id, int code,
                 const std::function<void(const std::wstring&, const std::wstring&)>& changed);

  /// Gives a control another text or choice, as a person would.
  void Enter(const std::wstring& name, const std::wstring& value);

  /// The first control that can be filled in; null if there is none.
  HWND FirstEditable() const;

  /// The control of a field, for its name in the layout file.
  HWND Control(std::size_t index) const;

 private:
  std::wstring ValueOf(std::size_t index) const;
  void ShowChoices(std::size_t index, const plm_panels::Field& field) const;
  void ChooseFolder(std::size_t index) const;

  HWND m_parent;
  HFONT m_font;
  std::vector<plm_panels::Field> m_fields;  // as they are shown
  std::vector<std::wstring> m_labels;
  std::wstring m_folderTitle;
  bool m_isShowing = false;
};

}  // namespace plm_window
