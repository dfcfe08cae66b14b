/// @file The tree of the active document: components with their state, mates, views.
#pragma once

#include "list_view.h"
#include "pane.h"
#include "tree_rows.h"

namespace cad_host {

/// Selecting a component makes it the document's selection, with its position as the pick point. The arrow
/// keys open and close folders, the right mouse button opens a menu.
class ComponentTree : public Pane {
 public:
  ComponentTree(const Desk& desk, HWND parent, int id);

  void Refresh() override;
  void TakeOnDensity() override;

  const TreeRows& Rows() const { return m_rows; }
  HWND List() const { return m_list.Handle(); }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam);
  void GiveCell(NMLVDISPINFOW& wanted) const;
  void OnSelected(const NMLISTVIEW& change);
  bool OnKey(WORD key);
  void SetOpen(int row, bool open);
  void ShowMenu(POINT place);
  void RunMenu(UINT command, const Component& component) const;

  TreeRows m_rows;
  ListView m_list;
  bool m_isRefreshing = false;  // selections that the list reports are not the person's
};

}  // namespace cad_host
