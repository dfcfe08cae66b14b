#include <windows.h>

#include "journal_pane.h"

#include "clipboard.h"
#include "control_ids.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

constexpr int kResultWidth = 320;
constexpr int kIndent = 3;  // blanks for each level
constexpr COLORREF kFailed = RGB(190, 30, 30);
constexpr COLORREF kEvent = RGB(20, 110, 60);
constexpr COLORREF kNote = RGB(110, 80, 10);
constexpr COLORREF kCallee = RGB(20, 60, 150);

/// The line of the entry without its result.
std::wstring CallOf(const JournalEntry& entry) {
  if (entry.kind == JournalEntry::Kind::kNote) return entry.method;
  return entry.method + L"(" + entry.arguments + L")";
}

std::wstring ResultOf(const JournalEntry& entry) {
  if (entry.kind == JournalEntry::Kind::kNote) return {};
  const std::wstring result =
      entry.results.empty() ? ResultText(entry.result) : ResultText(entry.result) + L", " + entry.results;
  return entry.fault ? result + L" [fault]" : result;
}

}  // namespace

JournalPane::JournalPane(const Desk& desk, HWND parent, int id) : Pane(desk) {
  CreatePane(parent, L"CadHostJournalPane", id);
  Control(WC_STATICW, kJournalLabel, SS_LEFT | SS_CENTERIMAGE, 0, Text(IDS_FILTER).c_str());
  Control(WC_EDITW, kJournalFilter, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE);
  HWND kinds = Control(WC_COMBOBOXW, kJournalKind, CBS_DROPDOWNLIST | WS_TABSTOP | WS_VSCROLL);
  for (unsigned kind = 0; kind < JournalFilter::kKindCount; ++kind) {
    SendMessageW(kinds, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Text(IDS_KIND_FIRST + kind).c_str()));
  }
  SendMessageW(kinds, CB_SETCURSEL, 0, 0);
  Control(WC_BUTTONW, kJournalClear, BS_PUSHBUTTON | WS_TABSTOP, 0, Text(IDS_CLEAR).c_str());
  Control(WC_BUTTONW, kJournalCopy, BS_PUSHBUTTON | WS_TABSTOP, 0, Text(IDS_COPY).c_str());
  m_list = ListView(Control(WC_LISTVIEWW, kJournalList, ListView::kStyle, WS_EX_CLIENTEDGE));
  m_list.AddColumn(Text(IDS_CALL), m_desk.Scale(kResultWidth));
  m_list.AddColumn(Text(IDS_RESULT), m_desk.Scale(kResultWidth));
}

void JournalPane::TakeOnDensity() {
  m_list.SetColumnWidth(1, m_desk.Scale(kResultWidth));
  Pane::TakeOnDensity();
}

void JournalPane::Refresh() {
  for (const auto& group : m_desk.host.Groups()) {
    for (const CommandItem& item : group->items) m_filter.enable_methods.insert(item.enable_method);
  }
  const auto& entries = m_desk.host.GetJournal().Entries();
  if (m_next == entries.size()) return;
  for (; m_next < entries.size(); ++m_next) {
    if (m_filter.Accepts(entries[m_next])) m_shown.push_back(m_next);
  }
  m_list.SetCount(m_shown.size());
  if (!m_shown.empty()) ListView_EnsureVisible(m_list.Handle(), static_cast<int>(m_shown.size()) - 1, FALSE);
}

void JournalPane::Filter() {
  m_filter.text = window::TextOfWindow(GetDlgItem(Handle(), kJournalFilter));
  const LRESULT kind = SendDlgItemMessageW(Handle(), kJournalKind, CB_GETCURSEL, 0, 0);
  m_filter.kind = static_cast<JournalFilter::Kind>(kind);
  m_shown.clear();
  m_next = m_first;
  m_list.SetCount(0);
  Refresh();
}

void JournalPane::Clear() {
  m_first = m_desk.host.GetJournal().Entries().size();
  Filter();
}

void JournalPane::Layout(SIZE size) {
  const int gap = m_desk.Scale(3);
  const int height = m_desk.LineHeight();
  const int button = m_desk.Scale(75);
  const int label = window::SizeOfText(m_desk.font.get(), Text(IDS_FILTER)).cx + gap;
  int left = gap;
  const auto put = [&](int id, int width, int tall) {
    Place(GetDlgItem(Handle(), id), left, gap, width, tall);
    left += width + gap;
  };
  put(kJournalLabel, label, height);
  put(kJournalFilter, m_desk.Scale(200), height);
  put(kJournalKind, m_desk.Scale(180), m_desk.Scale(250));
  put(kJournalClear, button, height);
  put(kJournalCopy, button, height);
  const int top = height + 2 * gap;
  Place(m_list.Handle(), 0, top, size.cx, size.cy - top);
  m_list.FillWidth(0, m_desk.Scale(kResultWidth));
}

LRESULT JournalPane::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lparam), lparam);
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam));
      return 0;
    default:
      return Pane::OnMessage(message, wparam, lparam);
  }
}

void JournalPane::OnCommand(int id, int code) {
  if (id == kJournalFilter && code == EN_CHANGE) Filter();
  if (id == kJournalKind && code == CBN_SELCHANGE) Filter();
  if (id == kJournalClear && code == BN_CLICKED) Clear();
  if (id == kJournalCopy && code == BN_CLICKED) Copy();
}

LRESULT JournalPane::OnNotify(const NMHDR& header, LPARAM lparam) {
  if (header.hwndFrom != m_list.Handle()) return 0;
  switch (header.code) {
    case LVN_GETDISPINFOW:
      GiveCell(*reinterpret_cast<NMLVDISPINFOW*>(lparam));
      return 0;
    case LVN_ODFINDITEMW:
      return -1;
    case LVN_KEYDOWN:
      if (reinterpret_cast<const NMLVKEYDOWN*>(lparam)->wVKey == 'C' && GetKeyState(VK_CONTROL) < 0) Copy();
      return 0;
    case NM_CUSTOMDRAW:
      return Colour(*reinterpret_cast<NMLVCUSTOMDRAW*>(lparam));
    default:
      return 0;
  }
}

const JournalEntry* JournalPane::At(std::size_t row) const {
  const auto& entries = m_desk.host.GetJournal().Entries();
  return row < m_shown.size() && m_shown[row] < entries.size() ? &entries[m_shown[row]] : nullptr;
}

void JournalPane::GiveCell(NMLVDISPINFOW& wanted) const {
  const JournalEntry* const entry = At(static_cast<std::size_t>(wanted.item.iItem));
  if (!entry || !(wanted.item.mask & LVIF_TEXT)) return;
  if (wanted.item.iSubItem == 1) return ListView::GiveText(wanted, ResultOf(*entry));
  ListView::GiveText(wanted,
                     std::wstring(static_cast<std::size_t>(entry->depth * kIndent), L' ') + CallOf(*entry));
}

LRESULT JournalPane::Colour(NMLVCUSTOMDRAW& drawing) const {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const JournalEntry* const entry = At(drawing.nmcd.dwItemSpec);
  if (!entry) return CDRF_DODEFAULT;
  using Kind = JournalEntry::Kind;
  if (IsFailure(*entry)) {
    drawing.clrText = kFailed;
  } else if (entry->kind != Kind::kCall) {
    drawing.clrText = entry->kind == Kind::kEvent ? kEvent : entry->kind == Kind::kNote ? kNote : kCallee;
  }
  return CDRF_DODEFAULT;
}

std::wstring JournalPane::RowText(std::size_t row) const {
  const JournalEntry* const entry = At(row);
  if (!entry) return {};
  return std::wstring(static_cast<std::size_t>(entry->depth * 2), L' ') + entry->Text();
}

void JournalPane::Copy() const {
  std::wstring text;
  const auto selected = m_list.Selected();
  for (const int row : selected) text += RowText(static_cast<std::size_t>(row)) + L"\r\n";
  for (std::size_t row = 0; selected.empty() && row < m_shown.size(); ++row) text += RowText(row) + L"\r\n";
  SetClipboardText(Handle(), text);
}

}  // namespace cad_host
