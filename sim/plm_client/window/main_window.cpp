#include "main_window.h"

#include <commctrl.h>
#include <windowsx.h>

#include "CStringHelper.h"
#include "control_ids.h"
#include "resource_ids.h"
#include "window/dpi.h"

namespace plm_window {
namespace {

constexpr UINT kNews = WM_APP + 1;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerInterval = 250;
constexpr SIZE kDefaultSize{780, 560};
constexpr int kMargin = 10;
constexpr int kLineHeight = 22;

}  // namespace

MainWindow::MainWindow(const Options& options, const window::Texts& texts)
    : m_options(options), m_texts(texts) {
  const window::Dpi dpi = window::Dpi::Of(nullptr);
  const SIZE size = options.geometry.value_or(kDefaultSize);
  m_font = window::MessageFont(dpi);
  Create({.class_name = L"PlmClientMain",
          .title = m_texts(IDS_MAIN_TITLE),
          .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
          .extended_style = WS_EX_CONTROLPARENT,
          .size = {dpi.Scale(size.cx), dpi.Scale(size.cy)}});
  m_desk.emplace(options, texts, [handle = Handle()] { PostMessageW(handle, kNews, 0, 0); });
  m_forAll = options.misbehave.has_value();
  MakeMenu();
  MakeControls();
  Place();  // first: the parts of the status bar take no texts before
  Refresh();
  SetTimer(Handle(), kTimer, kTimerInterval, nullptr);
  ShowWindow(Handle(), SW_SHOW);
}

void MainWindow::MakeControls() {
  const auto make = [this](const wchar_t* kind, int id, DWORD style, DWORD extended,
                           const std::wstring& text) {
    return window::MakeControl(Handle(), kind, id, style, m_font.get(), extended, text.c_str());
  };
  make(WC_STATICW, kItemsHeading, SS_LEFT, 0, m_texts(IDS_LABEL_SEARCH));
  make(WC_EDITW, kSearch, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, L"");
  m_itemList.emplace(Handle(), kItemList, m_font.get(), false,
                     std::vector<VirtualList::Column>{{m_texts(IDS_LABEL_NUMBER), 75},
                                                      {m_texts(IDS_LABEL_NAME), 195},
                                                      {m_texts(IDS_LABEL_FILE), 150},
                                                      {m_texts(IDS_LABEL_REVISION), 65},
                                                      {m_texts(IDS_LABEL_CHECKED_OUT_BY), 95},
                                                      {m_texts(IDS_LABEL_SINCE), 120}},
                     [this](std::size_t row, std::size_t column) { return ItemCell(row, column); });
  make(WC_STATICW, kLogHeading, SS_LEFT, 0, m_texts(IDS_HEADING_LOG));
  m_logList.emplace(Handle(), kLogList, m_font.get(), false,
                    std::vector<VirtualList::Column>{{m_texts(IDS_LOG_TIME), 65},
                                                     {m_texts(IDS_LOG_COMMAND), 170},
                                                     {m_texts(IDS_LABEL_USER), 70},
                                                     {m_texts(IDS_LOG_ANSWER), 410}},
                    [this](std::size_t row, std::size_t column) { return LogCell(row, column); });
  make(STATUSCLASSNAMEW, kStatus, SBARS_SIZEGRIP, 0, L"");
}

void MainWindow::Place() {
  RECT client{};
  GetClientRect(Handle(), &client);
  const window::Dpi dpi = window::Dpi::Of(Handle());
  const int margin = dpi.Scale(kMargin), line = dpi.Scale(kLineHeight);
  HWND status = GetDlgItem(Handle(), kStatus);
  SendMessageW(status, WM_SIZE, 0, 0);
  RECT status_place{};
  GetWindowRect(status, &status_place);
  const int width = client.right - margin * 2;
  const int bottom = client.bottom - (status_place.bottom - status_place.top) - margin;
  const int label = static_cast<int>(window::SizeOfText(m_font.get(), m_texts(IDS_LABEL_SEARCH)).cx) + margin;
  const int lists = bottom - margin - line - margin - line;
  const int item_height = lists * 60 / 100;
  int top = margin;
  MoveWindow(GetDlgItem(Handle(), kItemsHeading), margin, top + dpi.Scale(3), label, line, TRUE);
  MoveWindow(GetDlgItem(Handle(), kSearch), margin + label, top, dpi.Scale(260), line, TRUE);
  top += line + margin / 2;
  MoveWindow(m_itemList->Handle(), margin, top, width, item_height, TRUE);
  top += item_height + margin / 2;
  MoveWindow(GetDlgItem(Handle(), kLogHeading), margin, top, width, line, TRUE);
  top += line;
  MoveWindow(m_logList->Handle(), margin, top, width, std::max(0, bottom - top), TRUE);
  const int parts[] = {client.right * 52 / 100, client.right * 66 / 100, client.right * 80 / 100, -1};
  SendMessageW(status, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
}

std::wstring MainWindow::ItemCell(std::size_t row, std::size_t column) const {
  const plm_vault::Item& item = m_items.at(row);
  switch (column) {
    case 0:
      return item.number;
    case 1:
      return item.name;
    case 2:
      return item.file_name;
    case 3:
      return plm_vault::RevisionLabel(item.revision);
    case 4:
      return item.checked_out_by;
    default:
      return item.checked_out_at;
  }
}

std::wstring MainWindow::LogCell(std::size_t row, std::size_t column) const {
  const LogEntry& entry = m_desk->Log().at(row);
  switch (column) {
    case 0:
      return entry.time;
    case 1:
      return entry.command;
    case 2:
      return entry.user;
    default:
      return entry.answer;
  }
}

void MainWindow::Refresh() {
  m_items = m_desk->Vault().Search(window::TextOfWindow(GetDlgItem(Handle(), kSearch)));
  m_itemList->Show(m_items.size());
  RefreshLog();
  RefreshStatus();
}

void MainWindow::RefreshLog() {
  const std::size_t rows = m_desk->Log().size();
  m_logList->Show(rows);
  if (rows > 0) m_logList->ScrollTo(rows - 1);
}

void MainWindow::RefreshStatus() {
  const std::wstring& user = m_desk->User();
  const FaultChoice fault = m_desk->Faults().Chosen();
  std::vector<std::wstring> status = {
      m_texts(IDS_STATUS_SERVING, m_desk->PipePath()),
      m_texts(IDS_STATUS_HOSTS, std::to_wstring(m_desk->HostCount())),
      user.empty() ? m_texts(IDS_STATUS_NOBODY) : m_texts(IDS_STATUS_USER, user),
      fault.fault == Fault::kNone
          ? L""
          : m_texts(IDS_STATUS_FAULT, FaultText(static_cast<std::size_t>(fault.fault)))};
  if (status == m_status) return;
  m_status = std::move(status);
  for (std::size_t part = 0; part < m_status.size(); ++part) {
    SendDlgItemMessageW(Handle(), kStatus, SB_SETTEXTW, part,
                        reinterpret_cast<LPARAM>(m_status[part].c_str()));
  }
}

void MainWindow::OnTimer() {
  const auto now = std::chrono::steady_clock::now();
  if (m_desk->HostCount() > 0) m_lastSeen = now;
  if (m_options.until_idle && now - m_lastSeen >= *m_options.until_idle) {
    DestroyWindow(Handle());  // and the desk with it
    return;
  }
  m_desk->OnNews();  // a panel may have had to stay
  RefreshStatus();
  CheckMenu();
}

void MainWindow::OnCommand(int id, int code) {
  if (id == kSearch && code == EN_CHANGE) {
    Refresh();
  } else if (id >= kRefresh && (code == 0 || code == 1)) {  // the menu, or one of its keys
    OnMenuItem(id);
  }
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DESTROY) {
    m_desk.reset();
    PostQuitMessage(0);
    return 0;
  }
  if (!m_desk || !m_logList) return Window::OnMessage(message, wparam, lparam);
  switch (message) {
    case WM_SIZE:
      Place();
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(wparam), HIWORD(wparam));
      return 0;
    case WM_NOTIFY: {
      auto& header = *reinterpret_cast<NMHDR*>(lparam);
      if (header.hwndFrom == m_itemList->Handle()) m_itemList->OnNotify(header);
      if (header.hwndFrom == m_logList->Handle()) m_logList->OnNotify(header);
      return 0;
    }
    case WM_TIMER:
      OnTimer();
      return 0;
    case kNews:
      m_desk->OnNews();
      Refresh();
      return 0;
    default:
      return Window::OnMessage(message, wparam, lparam);
  }
}

}  // namespace plm_window
