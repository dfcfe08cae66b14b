#include <windows.h>

#include "property_table.h"

#include "control_ids.h"
#include "dialogs.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

struct Column {
  UINT title;
  int width;
};
constexpr Column kColumns[] = {{IDS_NAME, 110}, {IDS_VALUE, 120}, {IDS_TYPE, 70}};

struct Button {
  int id;
  UINT text;
};
constexpr Button kButtons[] = {
    {kAddProperty, IDS_ADD}, {kChangeProperty, IDS_CHANGE}, {kDeleteProperty, IDS_DELETE}};

}  // namespace

PropertyTable::PropertyTable(const Desk& desk, HWND parent, int id) : Pane(desk) {
  CreatePane(parent, L"CadHostPropertyTable", id);
  m_list = ListView(Control(WC_LISTVIEWW, kPropertyList, ListView::kStyle | LVS_SINGLESEL, WS_EX_CLIENTEDGE));
  for (const Column& column : kColumns) m_list.AddColumn(Text(column.title), m_desk.Scale(column.width));
  for (const Button& button : kButtons) {
    Control(WC_BUTTONW, button.id, BS_PUSHBUTTON | WS_TABSTOP, 0, Text(button.text).c_str());
  }
}

void PropertyTable::TakeOnDensity() {
  for (int column = 0; const Column& wanted : kColumns) {
    m_list.SetColumnWidth(column++, m_desk.Scale(wanted.width));
  }
  Pane::TakeOnDensity();
}

void PropertyTable::Refresh() {
  const auto document = m_desk.host.ActiveDocument();
  m_list.SetCount(document ? document->model.properties.size() : 0);
  EnableButtons();
}

void PropertyTable::EnableButtons() const {
  const bool selected = !m_list.Selected().empty();
  EnableWindow(GetDlgItem(Handle(), kAddProperty), m_desk.host.ActiveDocument() != nullptr);
  EnableWindow(GetDlgItem(Handle(), kChangeProperty), selected);
  EnableWindow(GetDlgItem(Handle(), kDeleteProperty), selected);
}

void PropertyTable::Layout(SIZE size) {
  const int gap = m_desk.Scale(3);
  const int height = m_desk.LineHeight();
  const int width = (size.cx - 4 * gap) / 3;
  Place(m_list.Handle(), 0, 0, size.cx, size.cy - height - 2 * gap);
  m_list.FillWidth(1, m_desk.Scale(kColumns[1].width) / 2);
  int left = gap;
  for (const Button& button : kButtons) {
    Place(GetDlgItem(Handle(), button.id), left, size.cy - height - gap, width, height);
    left += width + gap;
  }
}

LRESULT PropertyTable::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lparam), lparam);
    case WM_COMMAND:
      if (HIWORD(wparam) == BN_CLICKED) OnButton(LOWORD(wparam));
      return 0;
    default:
      return Pane::OnMessage(message, wparam, lparam);
  }
}

LRESULT PropertyTable::OnNotify(const NMHDR& header, LPARAM lparam) {
  if (header.hwndFrom != m_list.Handle()) return 0;
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveCell(*reinterpret_cast<NMLVDISPINFOW*>(lparam));
      return 0;
    case LVN_ODFINDITEMW:
      return m_list.FindTyped(*reinterpret_cast<const NMLVFINDITEMW*>(lparam), [this](int row) {
        const CustomProperty* const property = At(row);
        return property ? property->name : std::wstring();
      });
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
      EnableButtons();
      return 0;
    case LVN_KEYDOWN:
      return OnKey(reinterpret_cast<const NMLVKEYDOWN*>(lparam)->wVKey);
    case NM_DBLCLK:
    case NM_RETURN:
      Change();
      return 0;
    default:
      return 0;
  }
}

LRESULT PropertyTable::OnKey(WORD key) {
  if (key == VK_F2) Change();
  if (key == VK_DELETE) Delete();
  if (key == VK_INSERT) Add();
  return 0;
}

void PropertyTable::OnButton(int id) {
  if (id == kAddProperty) Add();
  if (id == kChangeProperty) Change();
  if (id == kDeleteProperty) Delete();
}

void PropertyTable::GiveCell(NMLVDISPINFOW& wanted) const {
  const CustomProperty* const property = At(wanted.item.iItem);
  if (!property || !(wanted.item.mask & LVIF_TEXT)) return;
  const UINT title = kColumns[wanted.item.iSubItem].title;
  ListView::GiveText(wanted, title == IDS_NAME    ? property->name
                             : title == IDS_VALUE ? property->text
                                                  : TypeName(m_desk.texts, property->type));
}

const CustomProperty* PropertyTable::At(int row) const {
  const auto document = m_desk.host.ActiveDocument();
  if (!document || row < 0) return nullptr;
  const auto place = static_cast<std::size_t>(row);
  const CustomProperties& properties = document->model.properties;
  return place < properties.size() ? &properties[place] : nullptr;
}

void PropertyTable::Add() {
  if (!m_desk.host.ActiveDocument() || m_desk.actions.IsBusy()) return;
  const auto property =
      AskForProperty(GetAncestor(Handle(), GA_ROOT), m_desk.texts, {.name = {}, .text = {}}, true);
  if (!property || property->name.empty()) return;
  m_desk.actions.Do({L"property", property->name, L"=", property->text, ScriptTypeName(property->type)});
}

void PropertyTable::Change() {
  const auto rows = m_list.Selected();
  const CustomProperty* const selected = rows.empty() ? nullptr : At(rows.front());
  if (!selected || m_desk.actions.IsBusy()) return;
  const auto property = AskForProperty(GetAncestor(Handle(), GA_ROOT), m_desk.texts, *selected, false);
  if (!property) return;
  m_desk.actions.Do({L"property", property->name, L"=", property->text, ScriptTypeName(property->type)});
}

void PropertyTable::Delete() {
  const auto rows = m_list.Selected();
  const CustomProperty* const selected = rows.empty() ? nullptr : At(rows.front());
  if (selected) m_desk.actions.Do({L"remove", L"property", selected->name});
}

}  // namespace cad_host
