#include <windows.h>

#include "menu_bar.h"

#include <utility>

#include "host_command_table.h"
#include "host_commands.h"

namespace cad_host {
namespace {

constexpr int kIconSize = 16;

/// Text as a menu shows it: an ampersand is an ampersand.
std::wstring Escaped(const std::wstring& text) {
  std::wstring escaped;
  for (const wchar_t character : text) {
    if (character == L'&') escaped += L'&';
    escaped += character;
  }
  return escaped;
}

void Append(HMENU bar, HMENU menu, const std::wstring& text) {
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), text.c_str());
}

}  // namespace

void MenuBar::Build(HWND main_window) {
  window::UniqueMenu before = std::exchange(m_menu, window::UniqueMenu(CreateMenu()));
  m_icons = DrawHostIcons(m_desk.Scale(kIconSize));
  m_iconPlaces.clear();
  for (const UINT text : {IDS_FILE, IDS_VIEW, IDS_INSERT}) AddHostMenu(text);
  AddAddInMenus();
  AddAddInList();
  AddHostMenu(IDS_TOOLS);
  AddQuirkList();
  AddHostMenu(IDS_HELP);
  SetMenu(main_window, m_menu.get());
  DrawMenuBar(main_window);
}

void MenuBar::AddHostMenu(UINT text) {
  HMENU menu = CreatePopupMenu();
  for (const HostCommand& command : kHostCommands) {
    if (command.menu != text) continue;
    if (command.separated) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    std::wstring label = m_desk.texts(command.id);
    if (command.key) label += std::wstring(L"\t") + command.key_text;
    if (command.icon != kNoIcon) m_iconPlaces[command.id] = command.icon;
    AddEntry(menu, command.id, label, true);  // all have room for one, so that their texts are in line
  }
  Append(m_menu.get(), menu, m_desk.texts(text));
}

void MenuBar::AddAddInMenus() {
  HMENU menu = nullptr;
  const CommandGroup* group = nullptr;
  int first_icon = -1;
  for (const AddInItem& item : m_items.All()) {
    if (!item.group->has_menu) continue;
    if (group != item.group.get()) {
      group = item.group.get();
      menu = CreatePopupMenu();
      Append(m_menu.get(), menu, Escaped(group->title));
      first_icon = AddIcons(m_icons, group->small_icons);
    }
    const auto id = static_cast<UINT>(item.id);
    if (first_icon >= 0) m_iconPlaces[id] = first_icon + static_cast<int>(item.item.image_index);
    AddEntry(menu, id, Escaped(item.item.name), first_icon >= 0);
  }
}

void MenuBar::AddAddInList() {
  HMENU menu = CreatePopupMenu();
  UINT id = kFirstAddInEntry;
  for (const AddInEntry& add_in : Host::RegisteredAddIns()) {
    AddEntry(menu, id++, Escaped(add_in.title), false);
  }
  if (id == kFirstAddInEntry) AppendMenuW(menu, MF_GRAYED, 0, m_desk.texts(IDS_NO_ADD_IN).c_str());
  Append(m_menu.get(), menu, m_desk.texts(IDS_ADD_INS));
}

void MenuBar::AddQuirkList() {
  HMENU menu = CreatePopupMenu();
  UINT id = kFirstQuirkEntry;
  for (const NamedQuirk& quirk : Quirks::All()) AddEntry(menu, id++, quirk.name, false);
  Append(m_menu.get(), menu, m_desk.texts(IDS_QUIRKS));
}

void MenuBar::AddEntry(HMENU menu, UINT id, const std::wstring& text, bool has_icon) {
  MENUITEMINFOW item{};
  item.cbSize = sizeof item;
  item.fMask = MIIM_ID | MIIM_STRING | (has_icon ? MIIM_BITMAP : 0);
  item.wID = id;
  item.dwTypeData = const_cast<wchar_t*>(text.c_str());
  item.hbmpItem = HBMMENU_CALLBACK;  // bitmaps would lose their transparency, and not become grey
  InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &item);
}

void MenuBar::MeasureIcon(MEASUREITEMSTRUCT& measure) const {
  const auto size = static_cast<UINT>(m_desk.Scale(kIconSize));
  measure.itemWidth = size + static_cast<UINT>(m_desk.Scale(4));
  measure.itemHeight = size + static_cast<UINT>(m_desk.Scale(2));
}

void MenuBar::DrawIcon(const DRAWITEMSTRUCT& drawing) const {
  const auto place = m_iconPlaces.find(drawing.itemID);
  if (place == m_iconPlaces.end()) return;
  RECT frame = drawing.rcItem;
  if (drawing.itemState & ODS_CHECKED) DrawEdge(drawing.hDC, &frame, BDR_SUNKENOUTER, BF_RECT);
  const auto& icons = drawing.itemState & ODS_GRAYED ? m_icons.grey : m_icons.normal;
  ImageList_Draw(icons.get(), place->second, drawing.hDC, drawing.rcItem.left, drawing.rcItem.top,
                 ILD_TRANSPARENT);
}

void MenuBar::Update(HMENU menu) const {
  for (int place = 0; place < GetMenuItemCount(menu); ++place) UpdateEntry(menu, GetMenuItemID(menu, place));
}

void MenuBar::UpdateEntry(HMENU menu, UINT id) const {
  ItemState state;
  if (const AddInItem* const item = m_items.Find(static_cast<int>(id))) {
    state = item->state;
  } else if (m_commands.Knows(id)) {
    state = m_commands.StateOf(id);
  } else {
    return;
  }
  EnableMenuItem(menu, id, MF_BYCOMMAND | (state.enabled ? MF_ENABLED : MF_GRAYED));
  CheckMenuItem(menu, id, MF_BYCOMMAND | (state.pressed ? MF_CHECKED : MF_UNCHECKED));
}

}  // namespace cad_host
