/// @file A list with columns that asks for the texts it shows.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "window/dpi.h"

namespace plm_window {

/// A list control of the system that holds no texts of its own. Its parent passes on the control's WM_NOTIFY.
class VirtualList {
 public:
  struct Column {
    std::wstring label;
    int width;  ///< at 96 dots per inch
  };
  using CellSource = std::function<std::wstring(std::size_t row, std::size_t column)>;

  /// Makes the control as the child `id` of `parent`.
  VirtualList(HWND parent, int id, HFONT font, bool several_rows, const std::vector<Column>& columns,
              CellSource cells);

  HWND Handle() const { return m_handle; }

  /// Shows so many rows, with new texts.
  void Show(std::size_t rows);

  std::vector<std::size_t> Selection() const;
  /// Selects these rows and no others, and brings the first into view.
  void Select(const std::vector<std::size_t>& rows);
  /// Brings a row into view.
  void ScrollTo(std::size_t row);

  /// Handles a notification of the control. @return whether the selection has changed.
  bool OnNotify(NMHDR& header);

  /// Draws what is selected so that it can be seen without the focus, too. @return the result of the
  /// notification.
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW& drawing) const;

 private:
  HWND m_handle = nullptr;
  CellSource m_cells;
  std::wstring m_text;  // of the cell that was asked for last
  bool m_isSelecting = false;
};

}  // namespace plm_window
