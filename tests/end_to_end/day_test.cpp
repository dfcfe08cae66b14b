// A person at the windows of the CAD host and of the PLM client, with the add-in between them.
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cad_host/model_file.h"
#include "cad_host/window/control_ids.h"
#include "client_program.h"
#include "controls.h"
#include "environment.h"
#include "models/sample_vault.h"
#include "module/add_in_dll.h"
#include "person.h"
#include "plm_client/window/control_ids.h"
#include "temp_folder.h"
#include "vault/vault.h"

namespace {

constexpr int kFileColumn = 2;        // of the lists of items
constexpr int kOpen = 0, kCover = 3;  // actions of the search panels, in their order
constexpr int kOnlyAction = 0;
constexpr int kRevisionField = 2;

class DayAtTheWindows : public testing::Test {
 protected:
  DayAtTheWindows() : m_vault(plm_models::MakeSampleVault(m_home.Path(L"vault"))) {
    m_home.Write(LR"(config\New TAVO SolidWorks AddOn\PlmClient.json)", R"({"pipe":"tavo-end-to-end"})");
    std::filesystem::create_directory(Pictures());
    m_dll.RegisterServer();
    m_client.emplace(L"plm_client_window.exe", m_clientOutput,
                     L"--language en --pipe tavo-end-to-end --vault \"" + m_home.Path(L"vault") + L"\"");
    m_person.AwaitWindow(L"PLM client");
    m_host.emplace(L"cad_host_window.exe", m_hostOutput,
                   L"--language en --connect \"TAVO SolidWorks Integration\"");
    m_window = m_person.AwaitWindow(L"CAD host");
  }

  ~DayAtTheWindows() override {
    m_host.reset();
    m_client.reset();
    m_dll.UnregisterServer();
  }

  /// The host's window, whose title names the active document.
  HWND Host() const { return m_window; }

  void ClickCommand(const std::wstring& text) const {
    m_person.ClickButton(m_person.AwaitControl(Host(), cad_host::kRibbon), text);
  }

  /// The panel that the client shows for a command.
  HWND Panel(const std::wstring& command) const { return m_person.AwaitWindow(L"PLM - " + command); }

  void ClickFile(HWND panel, const std::wstring& name, bool adds = false) const {
    m_person.ClickRow(m_person.AwaitControl(panel, plm_window::kRowList), kFileColumn, name, adds);
  }

  /// Picks the command for searching and types what is looked for. @return the panel.
  HWND Find(const std::wstring& words) const {
    ClickCommand(L"Search");
    HWND panel = Panel(L"Search");
    m_person.Click(m_person.AwaitControl(panel, plm_window::kFirstField));
    m_person.Type(words);
    return panel;
  }

  /// Clicks the action and waits until the panel is gone.
  void ClickAction(HWND panel, int action) const {
    m_person.Click(m_person.AwaitControl(panel, plm_window::kFirstAction + action));
    m_person.AwaitGone(panel);
  }

  void LogIn() const {
    m_person.ClickFirstButton(m_person.AwaitControl(Host(), cad_host::kHostToolbar));  // a new part
    m_person.AwaitWindow(L"Part1 - CAD host");
    ClickCommand(L"Log In");
    ClickAction(Panel(L"Log in"), kOnlyAction);
  }

  void OpenFromVault(const std::wstring& name) const {
    ClickCommand(L"Data Selector");
    HWND panel = Panel(L"Data selector");
    ClickFile(panel, name);
    ClickAction(panel, kOpen);
    m_person.AwaitWindow(name + L" - CAD host");
  }

  /// Presses the default button of the add-in's message box with this title.
  void Confirm(const std::wstring& title) const {
    HWND box = m_person.AwaitWindow(title);
    m_person.Click(m_person.AwaitControl(box, IDOK));
    m_person.AwaitGone(box);
  }

  /// Whether `state` becomes true within ten seconds: a panel is gone before the add-in has acted on its
  /// answer.
  static bool BecomesTrue(const std::function<bool()>& state) {
    for (int looks = 0; looks < 100; ++looks) {
      if (state()) return true;
      Sleep(100);
    }
    return false;
  }

  int TabCount() const {
    HWND tabs = m_person.AwaitControl(Host(), cad_host::kTabs);
    return static_cast<int>(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0));
  }

  /// What the tree says beside a component.
  std::wstring Revision(const std::wstring& component) const {
    HWND tree = m_person.AwaitControl(Host(), cad_host::kTreeList);
    const auto names = RowTexts(tree, 0), states = RowTexts(tree, 1);
    const auto place = std::ranges::find(names, component) - names.begin();
    return place < std::ssize(states) ? states[static_cast<std::size_t>(place)] : L"";
  }

  void TakePicture(const std::wstring& name) const {
    m_person.TakePicture(Pictures() + L"\\" + name + L".png");
  }

  /// Where the vault puts the files for the host.
  std::wstring Work(const std::wstring& name) const { return m_home.Path(L"vault\\work\\" + name); }

  static std::wstring Pictures() { return std::filesystem::current_path().wstring() + L"\\pictures"; }

  TempFolder m_home, m_clientOutput, m_hostOutput, m_tools;
  ScopedEnvironment m_root{L"TAVO_HOME", m_home.Path()};
  plm_vault::Vault m_vault;
  Person m_person{m_tools};

 private:
  AddInDll m_dll;
  std::optional<ClientProgram> m_client, m_host;
  HWND m_window = nullptr;
};

TEST_F(DayAtTheWindows, TwoFilesThatThePersonChoosesAreOpened) {
  LogIn();

  ClickCommand(L"Data Selector");
  HWND panel = Panel(L"Data selector");
  ClickFile(panel, L"bolt.sldprt");
  ClickFile(panel, L"nut.sldprt", true);
  TakePicture(L"two files");
  ClickAction(panel, kOpen);
  m_person.AwaitWindow(L".sldprt - CAD host");

  EXPECT_TRUE(std::filesystem::exists(Work(L"bolt.sldprt")));
  EXPECT_TRUE(std::filesystem::exists(Work(L"nut.sldprt")));
  EXPECT_TRUE(BecomesTrue([&] { return TabCount() == 3; }));  // with the part that was there before
}

TEST_F(DayAtTheWindows, AComponentIsCoveredWithTheLatestRevision) {
  LogIn();
  HWND panel = Find(L"gusset");
  ClickFile(panel, L"gusset.sldprt");
  m_person.Click(m_person.AwaitControl(panel, plm_window::kFirstField + kRevisionField));
  m_person.Press("a Tab");
  ClickAction(panel, kOpen);
  m_person.AwaitWindow(L"gusset.sldprt - CAD host");
  m_person.Press("ctrl+w");  // what is open as a document cannot be covered
  m_person.AwaitWindow(L"Part1 - CAD host");
  OpenFromVault(L"frame.sldasm");
  const std::wstring before = Revision(L"gusset-1");

  m_person.ClickRow(m_person.AwaitControl(Host(), cad_host::kTreeList), 0, L"gusset-1");
  panel = Find(L"gusset");
  ClickFile(panel, L"gusset.sldprt");
  ClickAction(panel, kCover);

  EXPECT_EQ(before, L"revision 1");
  EXPECT_TRUE(BecomesTrue([&] { return Revision(L"gusset-1") == L"revision 2"; }));
  EXPECT_EQ(cad_host::ReadModelFile(Work(L"gusset.sldprt")).revision, 2);
  TakePicture(L"covered");
}

TEST_F(DayAtTheWindows, AMaterialIsCreatedAndItsNumberStandsInTheProperties) {
  LogIn();
  OpenFromVault(L"bolt.sldprt");
  const std::size_t before = m_vault.FindMaterials(L"").size();

  ClickCommand(L"Create Material");
  Confirm(L"Extract properties");
  HWND panel = Panel(L"Create a material");
  TakePicture(L"material");
  ClickAction(panel, kOnlyAction);
  TakePicture(L"message box");
  Confirm(L"Backfill Properties");
  ClickAction(Panel(L"Fill from a material"), kOnlyAction);
  Confirm(L"Backfill Properties");  // says that it is done

  const auto materials = m_vault.FindMaterials(L"");
  ASSERT_EQ(materials.size(), before + 1);
  const auto numbers = RowTexts(m_person.AwaitControl(Host(), cad_host::kPropertyList), 1);
  const bool is_shown = std::ranges::any_of(
      materials, [&](const auto& material) { return std::ranges::count(numbers, material.number) > 0; });
  EXPECT_TRUE(is_shown);
}

TEST_F(DayAtTheWindows, AClientWhosePanelIsClosedInTheMiddleOfACommandLeavesTheHostUsable) {
  LogIn();

  ClickCommand(L"Data Selector");
  HWND panel = Panel(L"Data selector");
  m_person.PressUntilGone("alt+F4", panel);

  OpenFromVault(L"bolt.sldprt");
  TakePicture(L"after a closed panel");
  EXPECT_EQ(m_vault.FindByFileName(L"bolt.sldprt")->revision, 3);
}

}  // namespace
