// The add-in's menu, toolbar and command tabs in the window.
#include "window/control_ids.h"
#include "window_fixture.h"

namespace {

const Texts kItems{L"Log In",
                   L"Log Out",
                   L"Data Selector",
                   L"My Check-Out List",
                   L"Search",
                   L"My Tasks",
                   L"Start Workflow",
                   L"Get Code",
                   L"Import Current",
                   L"Import Lot",
                   L"Create Change Items",
                   L"Create Material",
                   L"My Temporary Materials",
                   L"Fill from Material"};

std::wstring MenuText(HMENU menu, int place) {
  wchar_t text[100] = {};
  GetMenuStringW(menu, static_cast<UINT>(place), text, static_cast<int>(std::size(text)), MF_BYPOSITION);
  return text;
}

class AddInCommandsTest : public WindowTest {
 protected:
  HMENU AddInMenu() {
    HMENU bar = GetMenu(Window().Handle());
    for (int place = 0; place < GetMenuItemCount(bar); ++place) {
      if (MenuText(bar, place) == L"TAVO PLM") return GetSubMenu(bar, place);
    }
    return nullptr;
  }

  Texts MenuTexts() {
    Texts texts;
    for (int place = 0; place < GetMenuItemCount(AddInMenu()); ++place) {
      texts.push_back(MenuText(AddInMenu(), place));
    }
    return texts;
  }

  /// The texts of the menu's entries that are not greyed out, after it has been opened.
  Texts EnabledInMenu() {
    SendMessageW(Window().Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(AddInMenu()), 0);
    Texts texts;
    for (int place = 0; place < GetMenuItemCount(AddInMenu()); ++place) {
      const UINT state = GetMenuState(AddInMenu(), static_cast<UINT>(place), MF_BYPOSITION);
      if (!(state & MF_GRAYED)) texts.push_back(MenuText(AddInMenu(), place));
    }
    return texts;
  }

  /// The names of the add-in's commands that have a button that is enabled.
  Texts EnabledIn(HWND bar) {
    Texts texts;
    for (const cad_host::AddInItem& item : Window().Items().All()) {
      if (SendMessageW(bar, TB_ISBUTTONENABLED, static_cast<WPARAM>(item.id), 0))
        texts.push_back(item.item.name);
    }
    return texts;
  }

  Texts TabTexts() {
    HWND tabs = Window().Commands().Tabs();
    Texts texts;
    for (int tab = 0; tab < TabCtrl_GetItemCount(tabs); ++tab) {
      wchar_t text[100] = {};
      TCITEMW item{};
      item.mask = TCIF_TEXT;
      item.pszText = text;
      item.cchTextMax = static_cast<int>(std::size(text));
      SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
      texts.emplace_back(text);
    }
    return texts;
  }

  std::wstring StatusText() {
    wchar_t text[200] = {};
    SendDlgItemMessageW(Window().Handle(), cad_host::kStatusBar, SB_GETTEXTW, 0,
                        reinterpret_cast<LPARAM>(text));
    return text;
  }

  void PickInMenu(std::size_t item) {
    const int id = Window().Items().All().at(item).id;
    SendMessageW(Window().Handle(), WM_COMMAND, static_cast<WPARAM>(id), 0);
    PassOn();
  }
};

TEST_F(AddInCommandsTest, TheMenuHasTheItemsThatTheAddInRegistered) {
  ShowWithAddIn();
  EXPECT_EQ(MenuTexts(), kItems);
}

TEST_F(AddInCommandsTest, BeforeTheLoginOnlyLogInIsEnabledAfterItAllOthers) {
  ShowWithAddIn();
  Do({L"new", L"part"});
  EXPECT_EQ(EnabledInMenu(), Texts{L"Log In"});
  EXPECT_EQ(EnabledIn(Window().Commands().Toolbar()), Texts{L"Log In"});
  EXPECT_EQ(EnabledIn(Window().Commands().Ribbon()), Texts{L"Log In"});
  PickInMenu(0);
  const Texts others(kItems.begin() + 1, kItems.end());
  EXPECT_EQ(EnabledInMenu(), others);
  EXPECT_EQ(EnabledIn(Window().Commands().Toolbar()), others);
  EXPECT_EQ(EnabledIn(Window().Commands().Ribbon()), others);
}

TEST_F(AddInCommandsTest, TheCommandTabBelongsToDocumentsAndGoesWithTheAddIn) {
  ShowWithAddIn();
  EXPECT_EQ(TabTexts(), Texts{L"Standard"});
  Do({L"new", L"drawing"});
  EXPECT_EQ(TabTexts(), (Texts{L"Standard", L"TAVO PLM"}));
  Do({L"disconnect"});
  EXPECT_EQ(TabTexts(), Texts{L"Standard"});
  EXPECT_EQ(AddInMenu(), nullptr);
}

TEST_F(AddInCommandsTest, TheButtonsLieBelowTheirTabsWhateverDocumentIsActive) {
  ShowWithAddIn();
  for (const wchar_t* const type : {L"part", L"assembly", L"part"}) {
    Do({L"new", type});
    RECT tabs{};
    RECT ribbon{};
    GetWindowRect(Window().Commands().Tabs(), &tabs);
    GetWindowRect(Window().Commands().Ribbon(), &ribbon);
    EXPECT_GE(ribbon.top, tabs.bottom) << Utf8(type);
    RECT last{};
    const LRESULT count = SendMessageW(Window().Commands().Ribbon(), TB_BUTTONCOUNT, 0, 0);
    SendMessageW(Window().Commands().Ribbon(), TB_GETITEMRECT, static_cast<WPARAM>(count - 1),
                 reinterpret_cast<LPARAM>(&last));
    EXPECT_LE(last.bottom, ribbon.bottom - ribbon.top) << "all rows are seen";
  }
}

TEST_F(AddInCommandsTest, IconsStayAfterTheirFileWasDeleted) {
  ShowWithAddIn();
  EXPECT_TRUE(DeleteFileW(m_host->Groups().at(0)->small_icons.path.c_str()));
  Window().Commands().Rebuild();
  const auto icons =
      reinterpret_cast<HIMAGELIST>(SendMessageW(Window().Commands().Toolbar(), TB_GETIMAGELIST, 0, 0));
  constexpr int kIconsOfTheAddIn = 16;
  EXPECT_EQ(ImageList_GetImageCount(icons), cad_host::kHostIconCount + kIconsOfTheAddIn);
}

TEST_F(AddInCommandsTest, PointingAtAnItemShowsItsHintInTheStatusBar) {
  ShowWithAddIn();
  const auto& item = Window().Items().All().at(0);
  SendMessageW(Window().Handle(), WM_MENUSELECT, MAKEWPARAM(item.id, MF_HILITE),
               reinterpret_cast<LPARAM>(AddInMenu()));
  EXPECT_EQ(StatusText(), item.item.hint);
  EXPECT_EQ(StatusText(), L"Log in; the other commands become available");
}

TEST_F(AddInCommandsTest, TheAddInsAreInAMenuThatConnectsAndDisconnectsThem) {
  Show();
  const auto registered = cad_host::Host::RegisteredAddIns();
  std::size_t place = 0;
  while (place < registered.size() && registered[place].title != kTitle) ++place;
  ASSERT_LT(place, registered.size());
  const UINT entry = cad_host::kFirstAddInEntry + static_cast<UINT>(place);
  SendMessageW(Window().Handle(), WM_COMMAND, entry, 0);
  PassOn();
  EXPECT_EQ(m_host->ConnectedAddIns().size(), 1u);
  HMENU bar = GetMenu(Window().Handle());
  SendMessageW(Window().Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(bar), 0);
  Window().Menus().Update(GetSubMenu(bar, 4));
  EXPECT_TRUE(GetMenuState(bar, entry, MF_BYCOMMAND) & MF_CHECKED);
  SendMessageW(Window().Handle(), WM_COMMAND, entry, 0);
  PassOn();
  EXPECT_EQ(m_host->ConnectedAddIns().size(), 0u);
}

}  // namespace
