#include <windows.h>

#include "document_tabs.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "control_ids.h"

namespace cad_host {
namespace {

std::wstring TitleOf(const Document& document) {
  return document.changed ? document.title + L" *" : document.title;
}

bool Contains(const std::vector<std::shared_ptr<Document>>& documents,
              const std::shared_ptr<Document>& document) {
  return std::ranges::find(documents, document) != documents.end();
}

}  // namespace

DocumentTabs::DocumentTabs(const Desk& desk, HWND parent, int id,
                           std::function<void(const std::shared_ptr<Document>& document)> close)
    : Pane(desk), m_close(std::move(close)) {
  CreatePane(parent, L"CadHostDocumentTabs", id);
  m_tabs = Control(WC_TABCONTROLW, kTabs, TCS_FOCUSNEVER | WS_CLIPSIBLINGS);
  SetWindowSubclass(m_tabs, OnTabMessage, 0, 0);
}

void DocumentTabs::UpdateDocuments() {
  const auto& open = m_desk.host.OpenDocuments();
  std::erase_if(m_documents, [&](const auto& document) { return !Contains(open, document); });
  for (const auto& document : open) {
    if (!Contains(m_documents, document)) m_documents.push_back(document);
  }
}

void DocumentTabs::Refresh() {
  UpdateDocuments();
  const auto count = static_cast<int>(m_documents.size());
  while (TabCtrl_GetItemCount(m_tabs) > count) TabCtrl_DeleteItem(m_tabs, count);
  for (int tab = 0; tab < count; ++tab) {
    const auto& document = m_documents[static_cast<std::size_t>(tab)];
    std::wstring title = TitleOf(*document);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = title.data();
    const bool is_new = tab >= TabCtrl_GetItemCount(m_tabs);
    SendMessageW(m_tabs, is_new ? TCM_INSERTITEMW : TCM_SETITEMW, static_cast<WPARAM>(tab),
                 reinterpret_cast<LPARAM>(&item));
    if (document == m_desk.host.ActiveDocument()) TabCtrl_SetCurSel(m_tabs, tab);
  }
  ShowWindow(m_tabs, count > 0 ? SW_SHOWNA : SW_HIDE);
  InvalidateRect(m_tabs, nullptr, TRUE);
}

// The frame that a tab control draws for its pages is outside of the pane.
void DocumentTabs::Layout(SIZE size) { Place(m_tabs, 0, 0, size.cx, 2 * size.cy); }

LRESULT DocumentTabs::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lparam)->code == TCN_SELCHANGE) {
    Activate(TabCtrl_GetCurSel(m_tabs));
    return 0;
  }
  if (message == WM_MBUTTONUP) {
    CloseAt({GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
    return 0;
  }
  return Pane::OnMessage(message, wparam, lparam);
}

void DocumentTabs::Activate(int tab) {
  if (tab < 0 || static_cast<std::size_t>(tab) >= m_documents.size()) return;
  const auto document = m_documents[static_cast<std::size_t>(tab)];
  const std::wstring& name = document->path.empty() ? document->title : document->path;
  if (!m_desk.actions.Do({L"activate", name})) Refresh();
}

LRESULT CALLBACK DocumentTabs::OnTabMessage(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR, DWORD_PTR) {
  if (message == WM_MBUTTONUP) {
    // Handled by the pane, where an exception ends.
    PostMessageW(GetParent(control), WM_MBUTTONUP, wParam, lParam);
    return 0;
  }
  return DefSubclassProc(control, message, wParam, lParam);
}

void DocumentTabs::CloseAt(POINT place) {
  TCHITTESTINFO hit{};
  hit.pt = place;
  const int tab = TabCtrl_HitTest(m_tabs, &hit);
  if (tab >= 0 && static_cast<std::size_t>(tab) < m_documents.size()) {
    m_close(m_documents[static_cast<std::size_t>(tab)]);
  }
}

}  // namespace cad_host
