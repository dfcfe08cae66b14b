/// @file The custom properties of the active document.
#pragma once

#include "list_view.h"
#include "pane.h"

namespace cad_host {

/// F2, Enter and a double click change the selected property, Del deletes it, Ins adds one.
class PropertyTable : public Pane {
 public:
  PropertyTable(const Desk& desk, HWND parent, int id);

  void Refresh() override;
  void TakeOnDensity() override;

  HWND List() const { return m_list.Handle(); }

  /// Lets the person fill in a new property and adds it.
  void Add();

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam);
  LRESULT OnKey(WORD key);
  void OnButton(int id);
  void GiveCell(NMLVDISPINFOW& wanted) const;
  const CustomProperty* At(int row) const;
  void EnableButtons() const;
  void Change();
  void Delete();

  ListView m_list;
};

}  // namespace cad_host
