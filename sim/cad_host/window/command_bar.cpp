#include <windows.h>

#include "command_bar.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "control_ids.h"
#include "host_command_table.h"
#include "host_commands.h"

namespace cad_host {
namespace {

constexpr int kSmallIcon = 20;
constexpr int kLargeIcon = 24;
constexpr int kUsualRows = 2;  // of the ribbon
constexpr int kGap = 2;

// The host's own tab, for every type of document.
constexpr UINT kStandardCommands[] = {IDS_OPEN,        IDS_SAVE,     IDS_INSERT_COMPONENT, IDS_ADD_PROPERTY,
                                      IDS_SELECT_FACE, IDS_NEW_PART, IDS_NEW_ASSEMBLY,     IDS_NEW_DRAWING};

// The commands of an add-in without a name in the tab.
constexpr long kNoText = 1;

const HostCommand* FindHostCommand(UINT id) {
  const auto* const found =
      std::ranges::find_if(kHostCommands, [&](const HostCommand& known) { return known.id == id; });
  return found == kHostCommands.end() ? nullptr : found;
}

}  // namespace

CommandBar::CommandBar(const Desk& desk, HWND parent, int id, const AddInItems& items,
                       const HostCommands& commands, Events events)
    : Pane(desk), m_items(items), m_commands(commands), m_events(std::move(events)) {
  CreatePane(parent, L"CadHostCommandBar", id);
  m_toolbar = MakeToolbar(kHostToolbar, 0);
  m_tabs = Control(WC_TABCONTROLW, kRibbonTabs, WS_CLIPSIBLINGS | TCS_FOCUSNEVER);
  m_ribbon = MakeToolbar(kRibbon, TBSTYLE_LIST | TBSTYLE_WRAPABLE);
}

HWND CommandBar::MakeToolbar(int id, DWORD style) const {
  HWND bar = Control(TOOLBARCLASSNAMEW, id,
                     TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE |
                         WS_CLIPSIBLINGS | style);
  SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(bar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
  return bar;
}

void CommandBar::Refresh() {
  if (Shape() == m_shape) return;
  FillTabs();
  FillRibbon();
  UpdateStates();
  m_events.rearrange();
}

void CommandBar::TakeOnDensity() {
  Pane::TakeOnDensity();
  Rebuild();
}

void CommandBar::Rebuild() {
  m_smallPlaces = LoadIcons(m_smallIcons, m_desk.Scale(kSmallIcon), false);
  m_largePlaces = LoadIcons(m_largeIcons, m_desk.Scale(kLargeIcon), true);
  for (const auto& [bar, icons] : {std::pair{m_toolbar, &m_smallIcons}, std::pair{m_ribbon, &m_largeIcons}}) {
    SendMessageW(bar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(icons->normal.get()));
    SendMessageW(bar, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(icons->grey.get()));
  }
  FillToolbar();
  FillTabs();
  FillRibbon();
  UpdateStates();
}

/// @return the place of each group's first icon.
std::map<const CommandGroup*, int> CommandBar::LoadIcons(IconSet& set, int size, bool large) const {
  set = DrawHostIcons(size);
  std::map<const CommandGroup*, int> places;
  for (const AddInItem& item : m_items.All()) {
    const CommandGroup& group = *item.group;
    if (!places.contains(&group))
      places[&group] = AddIcons(set, large ? group.large_icons : group.small_icons);
  }
  return places;
}

void CommandBar::AddSeparator(HWND bar) const {
  TBBUTTON button{};
  button.fsStyle = BTNS_SEP;
  button.iBitmap = m_desk.Scale(8);
  SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
}

void CommandBar::AddButton(HWND bar, UINT command, int icon, bool with_text) const {
  const std::wstring text = TextOf(command);
  TBBUTTON button{};
  button.idCommand = static_cast<int>(command);
  button.iBitmap = icon < 0 ? I_IMAGENONE : icon;
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = static_cast<BYTE>(BTNS_AUTOSIZE | (with_text ? BTNS_SHOWTEXT : 0));
  if (with_text) button.iString = reinterpret_cast<INT_PTR>(text.c_str());
  SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
}

void CommandBar::FillToolbar() {
  while (SendMessageW(m_toolbar, TB_DELETEBUTTON, 0, 0)) {
  }
  for (const HostCommand& command : kHostCommands) {
    if (command.icon == kNoIcon) continue;
    if (command.separated || command.id == IDS_INSERT_COMPONENT) AddSeparator(m_toolbar);
    AddButton(m_toolbar, command.id, command.icon, false);
  }
  const CommandGroup* group = nullptr;
  for (const AddInItem& item : m_items.All()) {
    if (!item.group->has_toolbar) continue;
    if (std::exchange(group, item.group.get()) != item.group.get()) AddSeparator(m_toolbar);
    const int first = m_smallPlaces.at(group);
    AddButton(m_toolbar, static_cast<UINT>(item.id),
              first < 0 ? -1 : first + static_cast<int>(item.item.image_index), first < 0);
  }
  SendMessageW(m_toolbar, TB_AUTOSIZE, 0, 0);
}

// The tabs of an add-in stay when it disconnects, but their commands are gone.
bool CommandBar::HasCommands(const CommandTab& tab) const {
  return std::ranges::any_of(tab.boxes, [this](const auto& box) {
    return std::ranges::any_of(box->commands, [this](const TabCommand& command) {
      return m_items.FindCommand(command.id) != nullptr;
    });
  });
}

std::vector<const CommandTab*> CommandBar::ShownTabs() const {
  const auto document = m_desk.host.ActiveDocument();
  const long type = document ? document->Type() : swDocNONE;
  std::vector<const CommandTab*> shown;
  for (const auto& tab : m_desk.host.Tabs()) {
    if (tab->visible && tab->document_type == type && HasCommands(*tab)) shown.push_back(tab.get());
  }
  return shown;
}

std::wstring CommandBar::Shape() const {
  std::wstring shape;
  for (const CommandTab* const tab : ShownTabs()) {
    shape += std::to_wstring(tab->document_type) + tab->name;
    for (const auto& box : tab->boxes) {
      for (const TabCommand& command : box->commands) shape += L" " + std::to_wstring(command.id);
    }
    shape += L'\n';
  }
  return shape.empty() ? L"-" : shape;
}

void CommandBar::FillTabs() {
  m_shape = Shape();
  TabCtrl_DeleteAllItems(m_tabs);
  std::vector<std::wstring> names{Text(IDS_STANDARD)};
  for (const CommandTab* const tab : ShownTabs()) names.push_back(tab->name);
  for (std::size_t place = 0; place < names.size(); ++place) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = names[place].data();
    SendMessageW(m_tabs, TCM_INSERTITEMW, place, reinterpret_cast<LPARAM>(&item));
  }
  const auto chosen = std::ranges::find(names, m_chosen);
  const auto front =
      chosen == names.end() ? names.size() - 1 : static_cast<std::size_t>(chosen - names.begin());
  TabCtrl_SetCurSel(m_tabs, static_cast<int>(front));
}

void CommandBar::FillRibbon() {
  while (SendMessageW(m_ribbon, TB_DELETEBUTTON, 0, 0)) {
  }
  const auto tabs = ShownTabs();
  const auto front = static_cast<std::size_t>(std::max(TabCtrl_GetCurSel(m_tabs), 0));
  if (front == 0 || front > tabs.size()) {
    for (const UINT command : kStandardCommands) {
      AddButton(m_ribbon, command, FindHostCommand(command)->icon, true);
    }
  } else {
    for (const auto& box : tabs[front - 1]->boxes) {
      for (const TabCommand& command : box->commands) {
        const AddInItem* const item = m_items.FindCommand(command.id);
        if (!item) continue;
        const int first = m_largePlaces.at(item->group.get());
        AddButton(m_ribbon, static_cast<UINT>(item->id),
                  first < 0 ? -1 : first + static_cast<int>(item->item.image_index),
                  command.text_style != kNoText);
      }
    }
  }
  SendMessageW(m_ribbon, TB_AUTOSIZE, 0, 0);
  InvalidateRect(m_ribbon, nullptr, TRUE);
}

void CommandBar::UpdateStates() {
  UpdateStates(m_toolbar);
  UpdateStates(m_ribbon);
}

void CommandBar::UpdateStates(HWND bar) const {
  const auto count = static_cast<int>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0));
  for (int place = 0; place < count; ++place) {
    TBBUTTON button{};
    SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&button));
    if (button.fsStyle & BTNS_SEP) continue;
    const AddInItem* const item = m_items.Find(button.idCommand);
    const ItemState state = item ? item->state : m_commands.StateOf(static_cast<UINT>(button.idCommand));
    const BYTE wanted =
        static_cast<BYTE>((button.fsState & ~(TBSTATE_ENABLED | TBSTATE_CHECKED)) |
                          (state.enabled ? TBSTATE_ENABLED : 0) | (state.pressed ? TBSTATE_CHECKED : 0));
    if (wanted == button.fsState) continue;
    SendMessageW(bar, TB_SETSTATE, static_cast<WPARAM>(button.idCommand), wanted);
  }
}

int CommandBar::HeightFor(int width) const {
  const int button = HIWORD(SendMessageW(m_ribbon, TB_GETBUTTONSIZE, 0, 0));
  const int toolbar = HIWORD(SendMessageW(m_toolbar, TB_GETBUTTONSIZE, 0, 0));
  RECT place{};
  GetClientRect(m_ribbon, &place);
  SetWindowPos(m_ribbon, nullptr, 0, 0, width - 2 * m_desk.Scale(kGap), place.bottom,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  RECT last{};
  SendMessageW(m_ribbon, TB_AUTOSIZE, 0, 0);
  const LRESULT count = SendMessageW(m_ribbon, TB_BUTTONCOUNT, 0, 0);
  SendMessageW(m_ribbon, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
  const int ribbon = std::max<int>(last.bottom, kUsualRows * button);
  return toolbar + m_desk.LineHeight() + ribbon + m_desk.Scale(5 * kGap);
}

void CommandBar::Layout(SIZE size) {
  const int gap = m_desk.Scale(kGap);
  const int toolbar = HIWORD(SendMessageW(m_toolbar, TB_GETBUTTONSIZE, 0, 0)) + gap;
  Place(m_toolbar, gap, gap, size.cx - 2 * gap, toolbar);
  const int tabs = toolbar + 2 * gap;
  Place(m_tabs, 0, tabs, size.cx, m_desk.LineHeight());
  const int ribbon = tabs + m_desk.LineHeight() + gap;
  Place(m_ribbon, gap, ribbon, size.cx - 2 * gap, size.cy - ribbon);
  SendMessageW(m_ribbon, TB_AUTOSIZE, 0, 0);
}

LRESULT CommandBar::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lparam), lparam);
    case WM_COMMAND:
      // The click is over when the command runs: it may wait for the person.
      PostMessageW(GetParent(Handle()), WM_COMMAND, LOWORD(wparam), 0);
      return 0;
    default:
      return Pane::OnMessage(message, wparam, lparam);
  }
}

LRESULT CommandBar::OnNotify(const NMHDR& header, LPARAM lparam) {
  switch (header.code) {
    case TCN_SELCHANGE: {
      const auto tabs = ShownTabs();
      const auto front = static_cast<std::size_t>(std::max(TabCtrl_GetCurSel(m_tabs), 0));
      m_chosen = front == 0 || front > tabs.size() ? Text(IDS_STANDARD) : tabs[front - 1]->name;
      FillRibbon();
      UpdateStates();
      m_events.rearrange();
      return 0;
    }
    case TTN_GETDISPINFOW:
      GiveToolTip(*reinterpret_cast<NMTTDISPINFOW*>(lparam));
      return 0;
    case TBN_HOTITEMCHANGE: {
      const auto& change = *reinterpret_cast<const NMTBHOTITEM*>(lparam);
      m_events.show_hint(change.dwFlags & HICF_LEAVING ? 0 : static_cast<UINT>(change.idNew));
      return 0;
    }
    default:
      return 0;
  }
}

void CommandBar::GiveToolTip(NMTTDISPINFOW& tip) const {
  const auto command = static_cast<int>(tip.hdr.idFrom);
  const AddInItem* const item = m_items.Find(command);
  const std::wstring text = item ? item->item.tool_tip : TextOf(static_cast<UINT>(command));
  const std::size_t size = std::min(text.size(), std::size(tip.szText) - 1);
  *std::copy_n(text.data(), size, tip.szText) = L'\0';
  tip.lpszText = tip.szText;
}

std::wstring CommandBar::TextOf(UINT command) const {
  const AddInItem* const item = m_items.Find(static_cast<int>(command));
  return item ? item->item.name : PlainText(Text(command));
}

}  // namespace cad_host
