/// @file The journal of calls between the host and its add-ins.
#pragma once

#include <cstddef>
#include <vector>

#include "journal_filter.h"
#include "list_view.h"
#include "pane.h"

namespace cad_host {

/// Can be filtered by a text and by kind; Ctrl+C copies the selected lines, or all if none is selected.
class JournalPane : public Pane {
 public:
  JournalPane(const Desk& desk, HWND parent, int id);

  void Refresh() override;
  void TakeOnDensity() override;

  HWND List() const { return m_list.Handle(); }

  /// The text of a row, as it is copied.
  std::wstring RowText(std::size_t row) const;

  void Copy() const;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam);
  void OnCommand(int id, int code);
  void GiveCell(NMLVDISPINFOW& wanted) const;
  LRESULT Colour(NMLVCUSTOMDRAW& drawing) const;
  void Filter();
  void Clear();
  const JournalEntry* At(std::size_t row) const;

  ListView m_list;
  JournalFilter m_filter;
  std::vector<std::size_t> m_shown;  // places in the journal
  std::size_t m_first = 0;           // place of the first entry after the last Clear
  std::size_t m_next = 0;            // place of the first entry that was not looked at
};

}  // namespace cad_host
