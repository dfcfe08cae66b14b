#include "list_view.h"

#include <algorithm>

namespace cad_host {
namespace {

bool BeginsWith(const std::wstring& text, std::wstring_view typed) {
  if (text.size() < typed.size()) return false;
  const auto size = static_cast<int>(typed.size());
  return CompareStringOrdinal(text.data(), size, typed.data(), size, TRUE) == CSTR_EQUAL;
}

}  // namespace

ListView::ListView(HWND control) : m_control(control) {
  ListView_SetExtendedListViewStyle(control, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
}

void ListView::AddColumn(const std::wstring& title, int width) const {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = const_cast<wchar_t*>(title.c_str());
  column.cx = width;
  HWND header = ListView_GetHeader(m_control);
  SendMessageW(m_control, LVM_INSERTCOLUMNW, static_cast<WPARAM>(Header_GetItemCount(header)),
               reinterpret_cast<LPARAM>(&column));
}

void ListView::SetColumnWidth(int column, int width) const {
  ListView_SetColumnWidth(m_control, column, width);
}

void ListView::FillWidth(int column, int smallest) const {
  RECT area{};
  GetWindowRect(m_control, &area);
  int left = area.right - area.left - GetSystemMetrics(SM_CXVSCROLL) - 3 * GetSystemMetrics(SM_CXEDGE);
  const int count = Header_GetItemCount(ListView_GetHeader(m_control));
  for (int other = 0; other < count; ++other) {
    if (other != column) left -= ListView_GetColumnWidth(m_control, other);
  }
  SetColumnWidth(column, std::max(left, smallest));
}

void ListView::SetCount(std::size_t count) const {
  SendMessageW(m_control, LVM_SETITEMCOUNT, count, LVSICF_NOSCROLL);
  InvalidateRect(m_control, nullptr, FALSE);
}

std::size_t ListView::Count() const { return static_cast<std::size_t>(ListView_GetItemCount(m_control)); }

std::vector<int> ListView::Selected() const {
  std::vector<int> rows;
  int row = -1;
  while ((row = ListView_GetNextItem(m_control, row, LVNI_SELECTED)) >= 0) rows.push_back(row);
  return rows;
}

void ListView::Select(int row) const {
  ListView_SetItemState(m_control, -1, 0, LVIS_SELECTED);
  if (row < 0) return;
  ListView_SetItemState(m_control, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(m_control, row, FALSE);
}

void ListView::GiveText(NMLVDISPINFOW& wanted, std::wstring_view text) {
  if (!(wanted.item.mask & LVIF_TEXT) || wanted.item.cchTextMax <= 0) return;
  const std::size_t size = std::min(text.size(), static_cast<std::size_t>(wanted.item.cchTextMax) - 1);
  *std::copy_n(text.data(), size, wanted.item.pszText) = L'\0';
}

int ListView::FindTyped(const NMLVFINDITEMW& search, const std::function<std::wstring(int row)>& text) const {
  if (!(search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !search.lvfi.psz) return -1;
  const std::wstring_view typed = search.lvfi.psz;
  const auto count = static_cast<int>(Count());
  for (int tried = 0; tried < count; ++tried) {
    const int row = (std::max(search.iStart, 0) + tried) % count;
    if (BeginsWith(text(row), typed)) return row;
  }
  return -1;
}

}  // namespace cad_host
