#include <windows.h>

#include "component_tree.h"

#include <windowsx.h>

#include "console/script.h"
#include "control_ids.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

constexpr int kNameWidth = 170;
constexpr int kStateWidth = 100;

}  // namespace

ComponentTree::ComponentTree(const Desk& desk, HWND parent, int id) : Pane(desk), m_rows(desk.texts) {
  CreatePane(parent, L"CadHostComponentTree", id);
  m_list = ListView(Control(WC_LISTVIEWW, kTreeList, ListView::kStyle | LVS_SINGLESEL, WS_EX_CLIENTEDGE));
  m_list.AddColumn(Text(IDS_NAME), m_desk.Scale(kNameWidth));
  m_list.AddColumn(Text(IDS_STATE), m_desk.Scale(kStateWidth));
  ListView_SetImageList(m_list.Handle(), m_desk.icons.normal.get(), LVSIL_SMALL);
}

void ComponentTree::TakeOnDensity() {
  ListView_SetImageList(m_list.Handle(), m_desk.icons.normal.get(), LVSIL_SMALL);
  m_list.SetColumnWidth(1, m_desk.Scale(kStateWidth));
  Pane::TakeOnDensity();
}

void ComponentTree::Refresh() {
  m_isRefreshing = true;
  const auto document = m_desk.host.ActiveDocument();
  m_rows.Show(document);
  m_list.SetCount(m_rows.Count());
  const Component* const selected =
      document && !document->selection.empty() ? document->selection.front().component.get() : nullptr;
  const int row = m_rows.RowOf(selected);
  const auto shown = m_list.Selected();
  if (row >= 0 && (shown.empty() || shown.front() != row)) m_list.Select(row);
  if (row < 0 && !shown.empty() && m_rows.ComponentAt(static_cast<std::size_t>(shown.front())))
    m_list.Select(-1);
  m_isRefreshing = false;
}

void ComponentTree::Layout(SIZE size) {
  Place(m_list.Handle(), 0, 0, size.cx, size.cy);
  m_list.FillWidth(0, m_desk.Scale(kNameWidth) / 2);
}

LRESULT ComponentTree::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lparam), lparam);
    case WM_CONTEXTMENU:
      ShowMenu({GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
      return 0;
    default:
      return Pane::OnMessage(message, wparam, lparam);
  }
}

LRESULT ComponentTree::OnNotify(const NMHDR& header, LPARAM lparam) {
  if (header.hwndFrom != m_list.Handle()) return 0;
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveCell(*reinterpret_cast<NMLVDISPINFOW*>(lparam));
      return 0;
    case LVN_ITEMCHANGED:
      OnSelected(*reinterpret_cast<const NMLISTVIEW*>(lparam));
      return 0;
    case LVN_ODFINDITEMW:
      return m_list.FindTyped(*reinterpret_cast<const NMLVFINDITEMW*>(lparam),
                              [this](int row) { return m_rows.Name(static_cast<std::size_t>(row)); });
    case LVN_KEYDOWN:
      return OnKey(reinterpret_cast<const NMLVKEYDOWN*>(lparam)->wVKey);
    case NM_DBLCLK: {
      const int row = reinterpret_cast<const NMITEMACTIVATE*>(lparam)->iItem;
      if (row >= 0) SetOpen(row, !m_rows.IsOpen(static_cast<std::size_t>(row)));
      return 0;
    }
    default:
      return 0;
  }
}

void ComponentTree::GiveCell(NMLVDISPINFOW& wanted) const {
  const auto row = static_cast<std::size_t>(wanted.item.iItem);
  if (row >= m_rows.Count()) return;
  if (wanted.item.mask & LVIF_IMAGE) wanted.item.iImage = m_rows.Icon(row);
  if (wanted.item.mask & LVIF_INDENT) wanted.item.iIndent = m_rows.At(row).depth;
  if (wanted.item.mask & LVIF_TEXT) {
    ListView::GiveText(wanted, wanted.item.iSubItem == 0 ? m_rows.Name(row) : m_rows.State(row));
  }
}

void ComponentTree::OnSelected(const NMLISTVIEW& change) {
  const bool selects = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
  if (m_isRefreshing || !selects || change.iItem < 0) return;
  const auto component = m_rows.ComponentAt(static_cast<std::size_t>(change.iItem));
  if (component) RunMenu(IDS_SELECT, *component);
}

bool ComponentTree::OnKey(WORD key) {
  const int row = m_list.Focused();
  if (row < 0) return false;
  const auto place = static_cast<std::size_t>(row);
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
      SetOpen(row, key == VK_RIGHT);
      return true;
    case VK_SPACE:
    case VK_RETURN:
      SetOpen(row, !m_rows.IsOpen(place));
      return true;
    default:
      return false;
  }
}

void ComponentTree::SetOpen(int row, bool open) {
  const auto place = static_cast<std::size_t>(row);
  if (place >= m_rows.Count() || !m_rows.IsFolder(place) || m_rows.IsOpen(place) == open) return;
  m_rows.SetOpen(place, open);
  Refresh();
}

void ComponentTree::ShowMenu(POINT place) {
  const int row = m_list.Focused();
  const auto component = row < 0 ? nullptr : m_rows.ComponentAt(static_cast<std::size_t>(row));
  if (!component || m_desk.actions.IsBusy()) return;
  if (place.x == -1 && place.y == -1) {  // asked for with the keyboard
    RECT item{};
    ListView_GetItemRect(m_list.Handle(), row, &item, LVIR_LABEL);
    place = {item.left, item.bottom};
    ClientToScreen(m_list.Handle(), &place);
  }
  const window::UniqueMenu menu(CreatePopupMenu());
  for (const UINT command :
       {UINT{IDS_SELECT}, component->IsSuppressed() ? UINT{IDS_UNSUPPRESS} : UINT{IDS_SUPPRESS},
        UINT{IDS_OPEN_COMPONENT}}) {
    AppendMenuW(menu.get(), MF_STRING, command, Text(command).c_str());
  }
  const auto chosen = static_cast<UINT>(
      TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, 0, Handle(), nullptr));
  if (chosen) RunMenu(chosen, *component);
}

void ComponentTree::RunMenu(UINT command, const Component& component) const {
  const ComponentRecord record = component.record;
  Actions& actions = m_desk.actions;
  if (command == IDS_SELECT) {
    actions.Do({L"select", L"component", record.name, L"at", ScriptNumber(record.position.x),
                ScriptNumber(record.position.y), ScriptNumber(record.position.z)});
  } else if (command == IDS_OPEN_COMPONENT) {
    actions.Do({L"open", record.path});
  } else {
    actions.Do({command == IDS_SUPPRESS ? L"suppress" : L"unsuppress", record.name});
  }
}

}  // namespace cad_host
