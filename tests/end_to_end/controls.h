/// @file What controls of another process show.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// The texts of a column of a list-view.
std::vector<std::wstring> RowTexts(HWND list, int column);

/// Where a row of a list-view is, in the control.
RECT PlaceOfRow(HWND list, int row);

/// A button of a toolbar.
struct ToolbarButton {
  std::wstring text;
  RECT place{};  ///< in the control
  bool enabled = false;
};

/// The buttons of a toolbar, without separators.
std::vector<ToolbarButton> ToolbarButtons(HWND toolbar);
