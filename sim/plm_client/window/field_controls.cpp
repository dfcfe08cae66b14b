#include "field_controls.h"

#include <commctrl.h>
#include <objbase.h>
#include <shlobj.h>
#include <windowsx.h>

#include <algorithm>
#include <array>
#include <memory>

#include "control_ids.h"
#include "resource_ids.h"
#include "window/font.h"
#include "window/window.h"

namespace plm_window {

using plm_panels::Choice;
using plm_panels::Field;
using plm_panels::FieldKind;

namespace {

constexpr int kRowHeight = 30;
constexpr int kControlHeight = 23;
constexpr int kDropHeight = 240;
constexpr int kGap = 10;
constexpr int kButtonWidth = 30;

struct TaskMemoryFreer {
  void operator()(ITEMIDLIST* list) const noexcept { CoTaskMemFree(list); }
};

void MakeFieldControl(HWND parent, HFONT font, int index, FieldKind kind) {
  const int id = kFirstField + index;
  switch (kind) {
    case FieldKind::kChoice:
      window::MakeControl(parent, WC_COMBOBOXW, id, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, font);
      break;
    case FieldKind::kShown:
      window::MakeControl(parent, WC_EDITW, id, WS_TABSTOP | ES_READONLY | ES_AUTOHSCROLL, font);
      break;
    case FieldKind::kFolder:
      window::MakeControl(parent, WC_EDITW, id, WS_TABSTOP | ES_AUTOHSCROLL, font, WS_EX_CLIENTEDGE);
      window::MakeControl(parent, WC_BUTTONW, kFirstFieldButton + index, WS_TABSTOP, font, 0, L"...");
      break;
    case FieldKind::kText:
      window::MakeControl(parent, WC_EDITW, id, WS_TABSTOP | ES_AUTOHSCROLL, font, WS_EX_CLIENTEDGE);
      break;
  }
}

}  // namespace

FieldControls::FieldControls(HWND parent, HFONT font, const plm_panels::Panel& panel,
                             const plm_panels::TextSource& text)
    : m_parent(parent), m_font(font), m_folderTitle(text(IDS_CHOOSE_FOLDER)) {
  int index = 0;
  for (const Field& field : panel.Fields()) {
    m_labels.push_back(text(field.label));
    window::MakeControl(parent, WC_STATICW, kFirstFieldLabel + index, SS_LEFT, font, 0,
                        m_labels.back().c_str());
    MakeFieldControl(parent, font, index, field.kind);
    ++index;
  }
}

HWND FieldControls::Control(std::size_t index) const {
  return GetDlgItem(m_parent, kFirstField + static_cast<int>(index));
}

std::wstring FieldControls::ValueOf(std::size_t index) const {
  const Field& field = m_fields.at(index);
  if (field.kind != FieldKind::kChoice) return window::TextOfWindow(Control(index));
  const int chosen = ComboBox_GetCurSel(Control(index));
  return chosen < 0 ? std::wstring() : field.choices.at(static_cast<std::size_t>(chosen)).value;
}

void FieldControls::ShowChoices(std::size_t index, const Field& field) const {
  HWND control = Control(index);
  SendMessageW(control, CB_RESETCONTENT, 0, 0);
  for (const Choice& choice : field.choices) ComboBox_AddString(control, choice.label.c_str());
  const auto chosen = std::ranges::find(field.choices, field.value, &Choice::value) - field.choices.begin();
  ComboBox_SetCurSel(control, static_cast<int>(chosen));
}

void FieldControls::Show(const std::vector<Field>& fields) {
  m_isShowing = true;
  const bool is_first = m_fields.empty();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const Field& field = fields[i];
    if (field.kind == FieldKind::kChoice) {
      const bool same_choices = !is_first && std::ranges::equal(m_fields[i].choices, field.choices, {},
                                                                &Choice::label, &Choice::label);
      if (!same_choices || m_fields[i].value != field.value) ShowChoices(i, field);
    } else if (window::TextOfWindow(Control(i)) != field.value) {
      SetWindowTextW(Control(i), field.value.c_str());
    }
  }
  m_fields = fields;
  m_isShowing = false;
}

int FieldControls::Place(int x, int y, int width, window::Dpi dpi) const {
  const std::size_t columns = m_fields.size() > 1 ? 2 : 1;
  const int gap = dpi.Scale(kGap), row_height = dpi.Scale(kRowHeight), height = dpi.Scale(kControlHeight);
  const int column_width =
      (width - gap * 2) / 2;  // a single field, too, is easier to read if it is not too long
  int label_width = 0;
  for (const std::wstring& label : m_labels) {
    label_width = std::max(label_width, static_cast<int>(window::SizeOfText(m_font, label).cx));
  }
  label_width += gap;
  for (std::size_t i = 0; i < m_fields.size(); ++i) {
    const int left = x + static_cast<int>(i % columns) * (column_width + gap * 2);
    const int top = y + static_cast<int>(i / columns) * row_height;
    const int id = static_cast<int>(i);
    const int button = m_fields[i].kind == FieldKind::kFolder ? dpi.Scale(kButtonWidth) : 0;
    const int control_height = m_fields[i].kind == FieldKind::kChoice ? dpi.Scale(kDropHeight) : height;
    MoveWindow(GetDlgItem(m_parent, kFirstFieldLabel + id), left, top + dpi.Scale(4), label_width, height,
               TRUE);
    MoveWindow(Control(i), left + label_width, top + dpi.Scale(m_fields[i].kind == FieldKind::kShown ? 4 : 0),
               column_width - label_width - button, control_height, TRUE);
    if (button) {
      MoveWindow(GetDlgItem(m_parent, kFirstFieldButton + id), left + column_width - button, top, button,
                 height, TRUE);
    }
  }
  return static_cast<int>((m_fields.size() + columns - 1) / columns) * row_height;
}

bool FieldControls::OnCommand(int id, int code,
                              const std::function<void(const std::wstring&, const std::wstring&)>& changed) {
  if (m_isShowing) return false;
  const int folder = id - kFirstFieldButton;
  if (folder >= 0 && folder < static_cast<int>(m_fields.size())) {
    ChooseFolder(static_cast<std::size_t>(folder));
    return false;  // the control tells of its new text by itself
  }
  const int index = id - kFirstField;
  if (index < 0 || index >= static_cast<int>(m_fields.size())) return false;
  Field& field = m_fields[static_cast<std::size_t>(index)];
  const int news = field.kind == FieldKind::kChoice ? CBN_SELCHANGE : EN_CHANGE;
  if (code != news || field.kind == FieldKind::kShown) return false;
  field.value = ValueOf(static_cast<std::size_t>(index));
  // A copy: the fields may be shown anew while `changed` works.
  const std::wstring name = field.name, value = field.value;
  changed(name, value);
  return true;
}

void FieldControls::Enter(const std::wstring& name, const std::wstring& value) {
  const auto field = std::ranges::find(m_fields, name, &Field::name);
  if (field == m_fields.end()) throw plm_vault::VaultError(L"there is no field \"" + name + L"\"");
  const auto index = static_cast<std::size_t>(field - m_fields.begin());
  HWND control = Control(index);
  SetFocus(control);
  if (field->kind != FieldKind::kChoice) {
    SetWindowTextW(control, value.c_str());
    return;
  }
  const auto is_meant = [&](const Choice& choice) { return choice.value == value || choice.label == value; };
  const auto choice = std::ranges::find_if(field->choices, is_meant);
  if (choice == field->choices.end()) {
    throw plm_vault::VaultError(L"\"" + name + L"\" has no choice \"" + value + L"\"");
  }
  ComboBox_SetCurSel(control, static_cast<int>(choice - field->choices.begin()));
  const int id = kFirstField + static_cast<int>(index);
  SendMessageW(m_parent, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, CBN_SELCHANGE)),
               reinterpret_cast<LPARAM>(control));
}

HWND FieldControls::FirstEditable() const {
  for (std::size_t i = 0; i < m_fields.size(); ++i) {
    if (m_fields[i].kind != FieldKind::kShown) return Control(i);
  }
  return nullptr;
}

void FieldControls::ChooseFolder(std::size_t index) const {
  BROWSEINFOW wanted{};
  wanted.hwndOwner = m_parent;
  wanted.lpszTitle = m_folderTitle.c_str();
  wanted.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  const std::unique_ptr<ITEMIDLIST, TaskMemoryFreer> chosen(SHBrowseForFolderW(&wanted));
  std::array<wchar_t, MAX_PATH> path{};
  if (chosen && SHGetPathFromIDListW(chosen.get(), path.data())) SetWindowTextW(Control(index), path.data());
}

}  // namespace plm_window
