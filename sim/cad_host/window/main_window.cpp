#include <windows.h>

#include "main_window.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "control_ids.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

constexpr UINT kStart = WM_APP + 1;
constexpr SIZE kUsualSize{1240, 900};
constexpr int kRecordingWidth = 110;

SIZE SizeFor(const WindowOptions& options, window::Dpi dpi) {
  if (options.size.cx > 0) return options.size;
  RECT desktop{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &desktop, 0);
  return {std::min<LONG>(dpi.Scale(kUsualSize.cx), desktop.right - desktop.left),
          std::min<LONG>(dpi.Scale(kUsualSize.cy), desktop.bottom - desktop.top)};
}

void Show(HWND pane, const RECT& place) {
  Place(pane, place.left, place.top, place.right - place.left, place.bottom - place.top);
}

}  // namespace

MainWindow::MainWindow(Host& host, Actions& actions, const WindowOptions& options)
    : m_options(options),
      m_desk{host, actions, window::Texts(options.language), {}, {}, {}},
      m_items(host),
      m_hostCommands(m_desk),
      m_menus(m_desk, m_items, m_hostCommands),
      m_player(actions) {
  m_desk.UseDpi(options.dpi ? window::Dpi(options.dpi) : window::Dpi::Of(nullptr));
  Create({.class_name = L"CadHostWindow",
          .title = m_desk.texts(IDS_TITLE),
          .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
          .extended_style = WS_EX_CONTROLPARENT,
          .size = SizeFor(options, m_desk.dpi)});
  MakePanes();
  m_hostCommands.Use({.owner = Handle(),
                      .pick_point = m_pickPoint.get(),
                      .properties = m_properties.get(),
                      .update = [this] { Refresh(); },
                      .play_script = [this](const std::wstring& path) { PlayScript(path); }});
  actions.OnDone([this] {
    Refresh();
    ComeBack();
  });
  m_menus.Build(Handle());
  m_commandBar->Rebuild();
  Refresh();
  Arrange();
  ShowStatus(m_desk.texts(IDS_READY));
  ShowWindow(Handle(), SW_SHOWNORMAL);
  UpdateWindow(Handle());
  PostMessageW(Handle(), kStart, 0, 0);
}

void MainWindow::MakePanes() {
  HWND self = Handle();
  m_commandBar = std::make_unique<CommandBar>(
      m_desk, self, kCommandBar, m_items, m_hostCommands,
      CommandBar::Events{.show_hint = [this](UINT command) { ShowHint(command); },
                         .rearrange = [this] { Arrange(); }});
  m_documentTabs = std::make_unique<DocumentTabs>(
      m_desk, self, kDocumentTabs,
      [this](const std::shared_ptr<Document>& document) { m_hostCommands.Close(document); });
  m_tree = std::make_unique<ComponentTree>(m_desk, self, kComponentTree);
  m_pickPoint = std::make_unique<PickPoint>(m_desk, self, kPickPoint);
  m_view = std::make_unique<ModelView>(m_desk, self, kModelView);
  m_properties = std::make_unique<PropertyTable>(m_desk, self, kPropertyTable);
  m_journal = std::make_unique<JournalPane>(m_desk, self, kJournalPane);
  m_statusBar = window::MakeControl(self, STATUSCLASSNAMEW, kStatusBar, SBARS_SIZEGRIP, m_desk.font.get());
}

void MainWindow::Refresh() {
  if (m_items.Update()) {
    m_items.UpdateStates();
    m_menus.Build(Handle());
    m_commandBar->Rebuild();
    Arrange();
  }
  m_commandBar->Refresh();
  m_documentTabs->Refresh();
  m_tree->Refresh();
  m_pickPoint->Refresh();
  m_view->Refresh();
  m_properties->Refresh();
  m_journal->Refresh();
  const auto document = m_desk.host.ActiveDocument();
  const std::wstring title = m_desk.texts(IDS_TITLE);
  SetWindowTextW(Handle(), document ? (document->title + L" - " + title).c_str() : title.c_str());
  const std::wstring recording = m_desk.actions.IsRecording() ? m_desk.texts(IDS_RECORDING) : L"";
  SendMessageW(m_statusBar, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(recording.c_str()));
  m_isStale = true;
}

// A message box without an owner, or a window of the PLM client, may leave no window active.
void MainWindow::ComeBack() const {
  HWND active = GetForegroundWindow();
  if (!active || active == GetDesktopWindow()) SetForegroundWindow(Handle());
}

void MainWindow::OnIdle() {
  if (m_isStale && !m_desk.actions.IsBusy()) UpdateStates();
}

void MainWindow::UpdateStates() {
  m_isStale = false;
  m_items.UpdateStates();
  m_commandBar->UpdateStates();
  m_journal->Refresh();
}

FrameLayout::Measures MainWindow::Measure() const {
  RECT area{};
  GetClientRect(Handle(), &area);
  RECT status{};
  GetWindowRect(m_statusBar, &status);
  return {.window = {area.right, area.bottom},
          .command_bar = m_commandBar->HeightFor(area.right),
          .document_tabs = m_documentTabs->Height(),
          .pick_point = m_pickPoint->Height(),
          .status_bar = static_cast<int>(status.bottom - status.top),
          .dpi = m_desk.dpi};
}

void MainWindow::Arrange() {
  if (!m_statusBar) return;
  SendMessageW(m_statusBar, WM_SIZE, 0, 0);
  const FrameLayout::Measures measures = Measure();
  const int parts[] = {static_cast<int>(measures.window.cx) - m_desk.Scale(kRecordingWidth), -1};
  SendMessageW(m_statusBar, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
  const FrameLayout::Places places = m_layout.Arrange(measures);
  Show(m_commandBar->Handle(), places.command_bar);
  Show(m_documentTabs->Handle(), places.document_tabs);
  Show(m_tree->Handle(), places.tree);
  Show(m_pickPoint->Handle(), places.pick_point);
  Show(m_view->Handle(), places.view);
  Show(m_properties->Handle(), places.properties);
  Show(m_journal->Handle(), places.journal);
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case kStart:
      Start();
      return 0;
    case WM_TIMER:
      PlayLine();
      return 0;
    case WM_SIZE:
      Arrange();
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(wparam));
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wparam) == WA_INACTIVE && IsChild(Handle(), GetFocus())) m_focus = GetFocus();
      return Window::OnMessage(message, wparam, lparam);
    case WM_SETFOCUS:
      SetFocus(IsWindowVisible(m_focus) ? m_focus : m_tree->List());
      return 0;
    case WM_INITMENUPOPUP:
      if (m_isStale && !m_desk.actions.IsBusy()) UpdateStates();
      m_menus.Update(reinterpret_cast<HMENU>(wparam));
      return 0;
    case WM_MENUSELECT:
      ShowHint(HIWORD(wparam) & (MF_POPUP | MF_SYSMENU) ? 0 : LOWORD(wparam));
      return 0;
    case WM_MEASUREITEM:
      m_menus.MeasureIcon(*reinterpret_cast<MEASUREITEMSTRUCT*>(lparam));
      return TRUE;
    case WM_DRAWITEM:
      m_menus.DrawIcon(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
      return TRUE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
      OnMouse(message, {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
      return 0;
    case WM_DPICHANGED:
      OnDensity(LOWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_CLOSE:
      if (m_desk.actions.IsBusy()) {
        MessageBeep(MB_OK);
      } else if (m_hostCommands.OfferToSave()) {
        Close();
      }
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return Window::OnMessage(message, wparam, lparam);
  }
}

// The Enter key of a dialog; lists do not get it by themselves.
void MainWindow::OnEnter() {
  m_pickPoint->TakeTyped();
  HWND focus = GetFocus();
  if (focus == m_tree->List() || focus == m_properties->List()) SendMessageW(focus, WM_KEYDOWN, VK_RETURN, 0);
}

void MainWindow::OnCommand(UINT id) {
  if (id == IDOK) return OnEnter();
  if (const AddInItem* const item = m_items.Find(static_cast<int>(id))) return Pick(*item);
  if (!m_hostCommands.Knows(id)) return;
  m_pickPoint->TakeTyped();
  m_hostCommands.Run(id);
}

void MainWindow::Pick(const AddInItem& item) {
  const auto words = m_items.PickWords(item);
  if (!m_desk.actions.IsBusy()) m_pickPoint->TakeTyped();
  if (!m_desk.actions.Do(words)) MessageBeep(MB_OK);
}

void MainWindow::OnMouse(UINT message, POINT place) {
  const FrameLayout::Measures measures = Measure();
  const auto edge = FrameLayout::EdgeAt(m_layout.Arrange(measures), place);
  if (message == WM_LBUTTONDOWN && edge) {
    m_dragged = edge;
    SetCapture(Handle());
  } else if (message == WM_LBUTTONUP && m_dragged) {
    m_dragged.reset();
    ReleaseCapture();
  } else if (message == WM_MOUSEMOVE && m_dragged) {
    m_layout.Drag(measures, *m_dragged, place);
    Arrange();
  }
  const auto shown = m_dragged ? m_dragged : edge;
  if (shown) SetCursor(LoadCursorW(nullptr, *shown == FrameLayout::Edge::kJournal ? IDC_SIZENS : IDC_SIZEWE));
}

void MainWindow::OnDensity(int dpi, const RECT& place) {
  m_desk.UseDpi(window::Dpi(dpi));
  SendMessageW(m_statusBar, WM_SETFONT, reinterpret_cast<WPARAM>(m_desk.font.get()), TRUE);
  for (Pane* const pane :
       std::initializer_list<Pane*>{m_commandBar.get(), m_documentTabs.get(), m_tree.get(), m_pickPoint.get(),
                                    m_view.get(), m_properties.get(), m_journal.get()}) {
    pane->TakeOnDensity();
  }
  m_menus.Build(Handle());
  Show(Handle(), place);
  Arrange();
}

void MainWindow::ShowHint(UINT command) {
  if (m_isPlaying) return;
  std::wstring text = m_desk.texts(IDS_READY);
  if (const AddInItem* const item = m_items.Find(static_cast<int>(command))) {
    text = item->item.hint;
  } else if (command >= kFirstQuirkEntry && m_hostCommands.Knows(command)) {
    text = Quirks::All()[command - kFirstQuirkEntry].description;
  } else if (command && command < kFirstAddInEntry && m_hostCommands.Knows(command)) {
    text = m_desk.texts(command + IDS_HINTS);
  }
  ShowStatus(text);
}

void MainWindow::ShowStatus(const std::wstring& text) const {
  SendMessageW(m_statusBar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace cad_host
