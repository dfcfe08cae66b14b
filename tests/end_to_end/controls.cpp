#include "controls.h"

// After windows.h, which it needs.
#include <commctrl.h>

#include <array>

#include "remote_memory.h"

namespace {

constexpr std::size_t kMostCharacters = 256;

using Text = std::array<wchar_t, kMostCharacters>;

LPARAM Argument(const RemoteMemory& memory) { return reinterpret_cast<LPARAM>(memory.At()); }

std::wstring CellText(HWND list, int row, int column) {
  const RemoteMemory memory(list, sizeof(LVITEMW) + sizeof(Text));
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = static_cast<wchar_t*>(memory.At(sizeof item));
  item.cchTextMax = static_cast<int>(kMostCharacters);
  memory.Put(&item, sizeof item);
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), Argument(memory));
  Text text{};
  memory.Get(text.data(), sizeof text - sizeof(wchar_t), sizeof item);
  return text.data();
}

ToolbarButton ReadButton(HWND toolbar, int index, const TBBUTTON& button) {
  const RemoteMemory memory(toolbar, sizeof(Text));
  Text text{};
  if (SendMessageW(toolbar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand), Argument(memory)) > 0) {
    memory.Get(text.data(), sizeof text - sizeof(wchar_t));
  }
  RECT place{};
  SendMessageW(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(index), Argument(memory));
  memory.Get(&place, sizeof place);
  return {text.data(), place, (button.fsState & TBSTATE_ENABLED) != 0};
}

}  // namespace

std::vector<std::wstring> RowTexts(HWND list, int column) {
  const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
  std::vector<std::wstring> texts;
  for (int row = 0; row < count; ++row) texts.push_back(CellText(list, row, column));
  return texts;
}

RECT PlaceOfRow(HWND list, int row) {
  const RemoteMemory memory(list, sizeof(RECT));
  RECT place{LVIR_LABEL, 0, 0, 0};
  memory.Put(&place, sizeof place);
  SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), Argument(memory));
  memory.Get(&place, sizeof place);
  return place;
}

std::vector<ToolbarButton> ToolbarButtons(HWND toolbar) {
  const auto count = static_cast<int>(SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0));
  const RemoteMemory memory(toolbar, sizeof(TBBUTTON));
  std::vector<ToolbarButton> buttons;
  for (int index = 0; index < count; ++index) {
    SendMessageW(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), Argument(memory));
    TBBUTTON button{};
    memory.Get(&button, sizeof button);
    if ((button.fsStyle & BTNS_SEP) == 0) buttons.push_back(ReadButton(toolbar, index, button));
  }
  return buttons;
}
