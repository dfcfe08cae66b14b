// The menu of the client's main window.
#include <array>

#include "control_ids.h"
#include "main_window.h"
#include "resource_ids.h"

namespace plm_window {
namespace {

constexpr std::chrono::seconds kDelay{10};

struct FaultItem {
  unsigned text;
  Fault fault;
};

/// In the order of the faults' numbers.
constexpr std::array kFaults = {FaultItem{IDS_FAULT_NONE, Fault::kNone},
                                FaultItem{IDS_FAULT_LATE, Fault::kLate},
                                FaultItem{IDS_FAULT_NEVER, Fault::kNever},
                                FaultItem{IDS_FAULT_GARBAGE, Fault::kGarbage},
                                FaultItem{IDS_FAULT_HALF_FRAME, Fault::kHalfFrame},
                                FaultItem{IDS_FAULT_DIE, Fault::kDie}};

void Append(const window::UniqueMenu& menu, int id, const std::wstring& text) {
  AppendMenuW(menu.get(), MF_STRING, static_cast<UINT_PTR>(id), text.c_str());
}

/// The sub-menu then belongs to `menu`.
void AppendMenu(const window::UniqueMenu& menu, window::UniqueMenu sub_menu, const std::wstring& text) {
  AppendMenuW(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(sub_menu.release()), text.c_str());
}

}  // namespace

std::wstring MainWindow::FaultText(std::size_t index) const {
  return m_texts(kFaults.at(index).text, std::to_wstring(kDelay.count()));
}

void MainWindow::MakeMenu() {
  window::UniqueMenu bar(CreateMenu()), client(CreatePopupMenu()), help(CreatePopupMenu());
  Append(client, kRefresh, m_texts(IDS_MENU_REFRESH) + L"\tF5");
  AppendMenuW(client.get(), MF_SEPARATOR, 0, nullptr);
  Append(client, kExit, m_texts(IDS_MENU_EXIT));
  Append(help, kAbout, m_texts(IDS_MENU_ABOUT));
  AppendMenu(bar, std::move(client), m_texts(IDS_MENU_CLIENT));
  AppendMenu(bar, MakeFaultMenu(), m_texts(IDS_MENU_MISBEHAVE));
  AppendMenu(bar, std::move(help), m_texts(IDS_MENU_HELP));
  SetMenu(Handle(), bar.release());  // the window destroys it
  std::array keys = {ACCEL{FVIRTKEY, VK_F5, static_cast<WORD>(kRefresh)}};
  m_accelerators.reset(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
  CheckMenu();
}

window::UniqueMenu MainWindow::MakeFaultMenu() const {
  window::UniqueMenu menu(CreatePopupMenu());
  for (std::size_t i = 0; i < kFaults.size(); ++i)
    Append(menu, kFirstFault + static_cast<int>(i), FaultText(i));
  AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
  Append(menu, kNextOnly, m_texts(IDS_MENU_NEXT_ONLY));
  Append(menu, kAlways, m_texts(IDS_MENU_ALWAYS));
  AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
  Append(menu, kUnchecked, m_texts(IDS_MENU_UNCHECKED));
  return menu;
}

void MainWindow::CheckMenu() {
  HMENU menu = GetMenu(Handle());
  const int fault = kFirstFault + static_cast<int>(m_desk->Faults().Chosen().fault);
  CheckMenuRadioItem(menu, kFirstFault, kFirstFault + static_cast<int>(kFaults.size()) - 1,
                     static_cast<UINT>(fault), MF_BYCOMMAND);
  CheckMenuRadioItem(menu, kNextOnly, kAlways, static_cast<UINT>(m_forAll ? kAlways : kNextOnly),
                     MF_BYCOMMAND);
  CheckMenuItem(menu, kUnchecked,
                MF_BYCOMMAND | static_cast<UINT>(m_desk->SendsFaulty() ? MF_CHECKED : MF_UNCHECKED));
}

void MainWindow::ChooseFault(int index) {
  const Fault fault = kFaults.at(static_cast<std::size_t>(index)).fault;
  m_desk->Faults().Choose({fault, fault == Fault::kLate ? kDelay : std::chrono::seconds(0)}, m_forAll);
}

void MainWindow::OnMenuItem(int id) {
  switch (id) {
    case kRefresh:
      Refresh();
      break;
    case kExit:
      DestroyWindow(Handle());
      return;
    case kAbout:
      MessageBoxW(Handle(), m_texts(IDS_ABOUT, m_desk->Vault().Folder().wstring()).c_str(),
                  m_texts(IDS_MAIN_TITLE).c_str(), MB_OK | MB_ICONINFORMATION);
      return;
    case kNextOnly:
    case kAlways:
      m_forAll = id == kAlways;
      m_desk->Faults().Choose(m_desk->Faults().Chosen(), m_forAll);
      break;
    case kUnchecked:
      m_desk->SendFaulty(!m_desk->SendsFaulty());
      break;
    default:
      ChooseFault(id - kFirstFault);
      break;
  }
  CheckMenu();
  RefreshStatus();
}

}  // namespace plm_window
