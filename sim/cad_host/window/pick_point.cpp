#include <windows.h>

#include "pick_point.h"

#include <commctrl.h>

#include <cmath>
#include <cwchar>
#include <utility>

#include "console/script.h"
#include "control_ids.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

struct Field {
  int id;
  const wchar_t* label;
  double Point::*coordinate;
};
constexpr Field kFields[] = {
    {kPointX, L"X", &Point::x}, {kPointY, L"Y", &Point::y}, {kPointZ, L"Z", &Point::z}};

// The label of a field has the field's number plus this one.
constexpr int kLabels = 100;

}  // namespace

PickPoint::PickPoint(const Desk& desk, HWND parent, int id) : Pane(desk) {
  CreatePane(parent, L"CadHostPickPoint", id);
  Control(WC_STATICW, kSelectionText, SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS | SS_CENTERIMAGE);
  for (const Field& field : kFields) {
    Control(WC_STATICW, field.id + kLabels, SS_RIGHT | SS_CENTERIMAGE, 0, field.label);
    Control(WC_EDITW, field.id, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, L"0");
  }
}

void PickPoint::Refresh() {
  m_isRefreshing = true;
  const auto document = m_desk.host.ActiveDocument();
  const bool selected = document && !document->selection.empty();
  for (const Field& field : kFields) {
    HWND control = GetDlgItem(Handle(), field.id);
    EnableWindow(control, document != nullptr);
    const Point point = selected ? document->selection.front().point : Point{};
    const std::wstring text = ScriptNumber(point.*field.coordinate);
    if (window::TextOfWindow(control) != text) SetWindowTextW(control, text.c_str());
  }
  SetDlgItemTextW(Handle(), kSelectionText, SelectedText().c_str());
  m_changed = false;
  m_isRefreshing = false;
}

std::wstring PickPoint::SelectedText() const {
  const auto document = m_desk.host.ActiveDocument();
  const std::wstring label = Text(IDS_SELECTION) + L" ";
  if (!document || document->selection.empty()) return label + Text(IDS_NOTHING);
  const auto& component = document->selection.front().component;
  return label + (component ? component->record.name : Text(IDS_FACE));
}

void PickPoint::Layout(SIZE size) {
  const int gap = m_desk.Scale(4);
  const int height = m_desk.LineHeight();
  const int label = m_desk.Scale(12);
  const int width = (size.cx - 4 * gap) / 3;
  Place(GetDlgItem(Handle(), kSelectionText), gap, gap, size.cx - 2 * gap, height);
  int left = gap;
  for (const Field& field : kFields) {
    Place(GetDlgItem(Handle(), field.id + kLabels), left, height + 2 * gap, label, height);
    Place(GetDlgItem(Handle(), field.id), left + label + gap / 2, height + 2 * gap, width - label - gap / 2,
          height);
    left += width + gap;
  }
}

LRESULT PickPoint::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message != WM_COMMAND) return Pane::OnMessage(message, wparam, lparam);
  if (HIWORD(wparam) == EN_CHANGE && !m_isRefreshing) m_changed = true;
  if (HIWORD(wparam) == EN_KILLFOCUS) TakeTyped();
  return 0;
}

void PickPoint::TakeTyped() {
  if (!std::exchange(m_changed, false) || m_desk.actions.IsBusy()) return;
  const auto document = m_desk.host.ActiveDocument();
  if (!document) return;
  std::vector<std::wstring> words = SelectFaceWords();
  const bool has_component = !document->selection.empty() && document->selection.front().component;
  if (has_component) {
    words.erase(words.begin() + 1);
    words.insert(words.begin() + 1, {L"component", document->selection.front().component->record.name});
  }
  m_desk.actions.Do(words);
}

std::vector<std::wstring> PickPoint::SelectFaceWords() const {
  std::vector<std::wstring> words{L"select", L"face"};
  for (const std::wstring& word : PointWords()) words.push_back(word);
  return words;
}

std::vector<std::wstring> PickPoint::PointWords() const {
  std::vector<std::wstring> words{L"at"};
  for (const Field& field : kFields) words.push_back(FieldNumber(field.id));
  return words;
}

std::wstring PickPoint::FieldNumber(int id) const {
  const std::wstring text = window::TextOfWindow(GetDlgItem(Handle(), id));
  wchar_t* end = nullptr;
  const double number = std::wcstod(text.c_str(), &end);
  if (text.empty() || *end || !std::isfinite(number)) throw HostError(m_desk.texts(IDS_NOT_A_NUMBER, text));
  return ScriptNumber(number);
}

}  // namespace cad_host
