/// @file A list view of the system whose rows are asked for when they are drawn.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cad_host {

/// Does not own the control, which its parent destroys.
class ListView {
 public:
  static constexpr DWORD kStyle = LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | WS_TABSTOP;

  ListView() = default;

  /// @param control a list view with kStyle.
  explicit ListView(HWND control);

  HWND Handle() const { return m_control; }

  void AddColumn(const std::wstring& title, int width) const;
  void SetColumnWidth(int column, int width) const;

  /// Makes the column as wide as the others leave room for, but at least `smallest`.
  void FillWidth(int column, int smallest) const;

  /// Says how many rows there are and that all have changed.
  void SetCount(std::size_t count) const;
  std::size_t Count() const;

  /// The selected rows, from the top.
  std::vector<int> Selected() const;

  /// The row with the focus; -1 without one.
  int Focused() const { return ListView_GetNextItem(m_control, -1, LVNI_FOCUSED); }

  /// Selects only this row and shows it; -1 selects none.
  void Select(int row) const;

  /// Answers LVN_GETDISPINFO: writes the text of a cell where the control has room for it.
  static void GiveText(NMLVDISPINFOW& wanted, std::wstring_view text);

  /// Answers LVN_ODFINDITEM: the first row from `search.iStart` on whose text begins with the typed one; -1
  /// if there is none.
  int FindTyped(const NMLVFINDITEMW& search, const std::function<std::wstring(int row)>& text) const;

 private:
  HWND m_control = nullptr;
};

}  // namespace cad_host
