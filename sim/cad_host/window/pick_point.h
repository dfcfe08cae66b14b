/// @file What is selected in the active document, and the point that the person picked.
#pragma once

#include "pane.h"

namespace cad_host {

/// The point can be typed; Enter or leaving a field moves the selection there.
class PickPoint : public Pane {
 public:
  PickPoint(const Desk& desk, HWND parent, int id);

  void Refresh() override;

  /// The height that the pane needs.
  int Height() const { return 2 * m_desk.LineHeight() + m_desk.Scale(12); }

  /// The words that select a face at the point in the fields.
  /// @throws HostError naming the text that is not a number.
  std::vector<std::wstring> SelectFaceWords() const;

  /// The words "at X Y Z" for the point in the fields.
  /// @throws HostError naming the text that is not a number.
  std::vector<std::wstring> PointWords() const;

  /// If the person has changed a field that has the focus, takes the change on.
  void TakeTyped();

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  std::wstring FieldNumber(int id) const;
  std::wstring SelectedText() const;

  bool m_changed = false;  // by the person, not yet taken on
  bool m_isRefreshing = false;
};

}  // namespace cad_host
