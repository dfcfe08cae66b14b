#include "virtual_list.h"

#include "window/window.h"

namespace plm_window {
namespace {

constexpr COLORREF kSelectedColour = RGB(204, 228, 247);

}  // namespace

VirtualList::VirtualList(HWND parent, int id, HFONT font, bool several_rows,
                         const std::vector<Column>& columns, CellSource cells)
    : m_handle(window::MakeControl(parent, WC_LISTVIEWW, id,
                                   WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS |
                                       (several_rows ? 0u : static_cast<DWORD>(LVS_SINGLESEL)),
                                   font, WS_EX_CLIENTEDGE)),
      m_cells(std::move(cells)) {
  ListView_SetExtendedListViewStyle(m_handle, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  const window::Dpi dpi = window::Dpi::Of(parent);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    std::wstring label = columns[i].label;
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = label.data();
    column.cx = dpi.Scale(columns[i].width);
    ListView_InsertColumn(m_handle, static_cast<int>(i), &column);
  }
}

void VirtualList::Show(std::size_t rows) {
  ListView_SetItemCountEx(m_handle, static_cast<int>(rows), 0);
  InvalidateRect(m_handle, nullptr, FALSE);
}

std::vector<std::size_t> VirtualList::Selection() const {
  std::vector<std::size_t> rows;
  int row = -1;
  while ((row = ListView_GetNextItem(m_handle, row, LVNI_SELECTED)) >= 0) {
    rows.push_back(static_cast<std::size_t>(row));
  }
  return rows;
}

void VirtualList::Select(const std::vector<std::size_t>& rows) {
  if (Selection() == rows) return;
  m_isSelecting = true;  // what the program selects is no news
  ListView_SetItemState(m_handle, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
  for (const std::size_t row : rows) {
    ListView_SetItemState(m_handle, static_cast<int>(row), LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
  }
  m_isSelecting = false;
  if (!rows.empty()) ScrollTo(rows.front());
}

void VirtualList::ScrollTo(std::size_t row) {
  ListView_EnsureVisible(m_handle, static_cast<int>(row), FALSE);
}

bool VirtualList::OnNotify(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW: {
      LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
      if ((item.mask & LVIF_TEXT) == 0) return false;
      m_text = m_cells(static_cast<std::size_t>(item.iItem), static_cast<std::size_t>(item.iSubItem));
      item.pszText = m_text.data();
      return false;
    }
    case LVN_ITEMCHANGED: {
      const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
      return !m_isSelecting && ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) != 0;
    }
    case LVN_ODSTATECHANGED:
      return !m_isSelecting;
    default:
      return false;
  }
}

LRESULT VirtualList::OnCustomDraw(NMLVCUSTOMDRAW& drawing) const {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || GetFocus() == m_handle) return CDRF_DODEFAULT;
  const auto row = static_cast<int>(drawing.nmcd.dwItemSpec);
  if (ListView_GetItemState(m_handle, row, LVIS_SELECTED) == 0) return CDRF_DODEFAULT;
  drawing.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
  drawing.clrTextBk = kSelectedColour;
  return CDRF_NEWFONT;
}

}  // namespace plm_window
