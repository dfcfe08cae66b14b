/// @file The open documents as tabs.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "pane.h"

namespace cad_host {

/// The tabs stay in the order in which the documents were opened. A click activates a document, one with the
/// middle button closes it.
class DocumentTabs : public Pane {
 public:
  /// @param close called to close a document, so that the person can be asked first.
  DocumentTabs(const Desk& desk, HWND parent, int id,
               std::function<void(const std::shared_ptr<Document>& document)> close);

  void Refresh() override;

  /// The height that the tabs need.
  int Height() const { return m_desk.LineHeight() + m_desk.Scale(2); }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Layout(SIZE size) override;

 private:
  void UpdateDocuments();
  void Activate(int tab);
  static LRESULT CALLBACK OnTabMessage(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR argument);
  void CloseAt(POINT place);

  std::function<void(const std::shared_ptr<Document>& document)> m_close;
  HWND m_tabs = nullptr;
  std::vector<std::shared_ptr<Document>> m_documents;  // as they are in the tabs
};

}  // namespace cad_host
