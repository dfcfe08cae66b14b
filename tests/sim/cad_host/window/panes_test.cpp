// The panes of the window: tree, pick point, properties, documents, picture.
#include "window/control_ids.h"
#include "window_fixture.h"

namespace {

using cad_host::ComponentRecord;
using cad_host::ModelFile;

class PanesTest : public WindowTest {
 protected:
  /// An assembly with bolt-1 at (0.1, 0.2, 0.3) and nut-1, which is suppressed.
  std::wstring MakeAssembly() const {
    ModelFile model;
    model.type = swDocASSEMBLY;
    model.components = {
        ComponentRecord{.name = L"bolt-1", .path = MakeModel(L"bolt.sldprt"), .position = {0.1, 0.2, 0.3}},
        ComponentRecord{.name = L"nut-1",
                        .path = MakeModel(L"nut.sldprt"),
                        .position = {},
                        .suppression = swComponentSuppressed}};
    return MakeModel(L"top.sldasm", model);
  }

  std::wstring Field(int id) {
    return window::TextOfWindow(GetDlgItem(GetDlgItem(Window().Handle(), cad_host::kPickPoint), id));
  }

  /// What is selected in the active document.
  const cad_host::Selection& Selected() { return m_host->ActiveDocument()->selection.at(0); }

  static void ClickRow(HWND list, int row) {
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  }

  std::wstring Title() { return window::TextOfWindow(Window().Handle()); }
};

TEST_F(PanesTest, TheTreeShowsComponentsWithTheirState) {
  Show();
  Do({L"open", MakeAssembly()});
  HWND tree = Window().Tree().List();
  EXPECT_EQ(Column(tree), (Texts{L"top.sldasm", L"Components (2)", L"bolt-1", L"nut-1", L"Mates (0)"}));
  EXPECT_EQ(Column(tree, 1), (Texts{L"revision 1", L"", L"revision 1", L"suppressed", L""}));
  Do({L"unsuppress", L"nut-1"});
  Do({L"suppress", L"bolt-1"});
  EXPECT_EQ(Column(tree, 1), (Texts{L"revision 1", L"", L"suppressed", L"revision 1", L""}));
}

TEST_F(PanesTest, SelectingAComponentInTheTreeSetsTheSelectionAndThePickPoint) {
  Show();
  Do({L"open", MakeAssembly()});
  constexpr int kBoltRow = 2;
  ClickRow(Window().Tree().List(), kBoltRow);
  PassOn();
  EXPECT_EQ(Selected().component->record.name, L"bolt-1");
  EXPECT_EQ(Selected().point.z, 0.3);
  EXPECT_EQ(Field(cad_host::kPointX) + L" " + Field(cad_host::kPointY) + L" " + Field(cad_host::kPointZ),
            L"0.1 0.2 0.3");
}

TEST_F(PanesTest, ATypedPointMovesTheSelection) {
  Show();
  Do({L"open", MakeAssembly()});
  Do({L"select", L"component", L"bolt-1"});
  HWND pane = GetDlgItem(Window().Handle(), cad_host::kPickPoint);
  SetDlgItemTextW(pane, cad_host::kPointY, L"-2.5");
  SendMessageW(pane, WM_COMMAND, MAKEWPARAM(cad_host::kPointY, EN_KILLFOCUS), 0);
  EXPECT_EQ(Selected().component->record.name, L"bolt-1");
  EXPECT_EQ(Selected().point.y, -2.5);
}

TEST_F(PanesTest, AClickInThePictureSelectsAFaceThereADoubleClickTheComponent) {
  Show();
  Do({L"open", MakeAssembly()});
  const POINT place = Window().View().PlaceOf({0.1, 0.2, 0});
  const LPARAM at = MAKELPARAM(place.x, place.y);
  SendMessageW(Window().View().Handle(), WM_LBUTTONDOWN, 0, at);
  EXPECT_EQ(Selected().component, nullptr);
  EXPECT_NEAR(Selected().point.x, 0.1, 0.01);
  EXPECT_NEAR(Selected().point.y, 0.2, 0.01);
  SendMessageW(Window().View().Handle(), WM_LBUTTONDBLCLK, 0, at);
  EXPECT_EQ(Selected().component->record.name, L"bolt-1");
}

TEST_F(PanesTest, TheArrowKeysCloseAndOpenAFolderOfTheTree) {
  Show();
  Do({L"open", MakeAssembly()});
  HWND tree = Window().Tree().List();
  constexpr int kFolderRow = 1;
  ClickRow(tree, kFolderRow);
  Press(tree, VK_LEFT);
  EXPECT_EQ(Column(tree), (Texts{L"top.sldasm", L"Components (2)", L"Mates (0)"}));
  Press(tree, VK_RIGHT);
  EXPECT_EQ(ListView_GetItemCount(tree), 5);
}

TEST_F(PanesTest, EnterClosesAndOpensAFolderOfTheTreeToo) {
  Show();
  Do({L"open", MakeAssembly()});
  HWND tree = Window().Tree().List();
  ClickRow(tree, 1);
  SetFocus(tree);
  SendMessageW(Window().Handle(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(ListView_GetItemCount(tree), 3);
}

TEST_F(PanesTest, ADrawingShowsItsViews) {
  ModelFile drawing;
  drawing.type = swDocDRAWING;
  drawing.views = {{.model = L"C:\\bolt.sldprt", .name = L"*Front", .position = {}}};
  Show();
  Do({L"open", MakeModel(L"sheet.slddrw", drawing)});
  EXPECT_EQ(Column(Window().Tree().List()), (Texts{L"sheet.slddrw", L"Views (1)", L"*Front"}));
}

TEST_F(PanesTest, PropertiesAreShownChangedAndDeleted) {
  Show();
  Do({L"new", L"part"});
  Do({L"property", L"Number", L"=", L"7", L"number"});
  Do({L"property", L"Name", L"=", L"螺栓"});
  HWND list = Window().Properties().List();
  EXPECT_EQ(Column(list, 0), (Texts{L"Number", L"Name"}));
  EXPECT_EQ(Column(list, 1), (Texts{L"7", L"螺栓"}));
  EXPECT_EQ(Column(list, 2), (Texts{L"Number", L"Text"}));
  Do({L"property", L"Number", L"=", L"8"});
  EXPECT_EQ(Cell(list, 0, 1), L"8");
  ClickRow(list, 0);
  Press(list, VK_DELETE);
  EXPECT_EQ(Column(list, 0), Texts{L"Name"});
}

TEST_F(PanesTest, AQuirkIsSwitchedByItsEntryInTheMenu) {
  Show();
  const cad_host::NamedQuirk& quirk = cad_host::Quirks::All()[1];
  const UINT entry = cad_host::kFirstQuirkEntry + 1;
  SendMessageW(Window().Handle(), WM_COMMAND, entry, 0);
  EXPECT_FALSE(m_host->GetQuirks().IsOn(quirk.quirk));
  SendMessageW(Window().Handle(), WM_COMMAND, entry, 0);
  EXPECT_TRUE(m_host->GetQuirks().IsOn(quirk.quirk));
}

TEST_F(PanesTest, TheTitleNamesTheActiveDocument) {
  Show();
  EXPECT_EQ(Title(), L"CAD host");
  Do({L"new", L"part"});
  EXPECT_EQ(Title(), L"Part1 - CAD host");
}

TEST_F(PanesTest, TextsAreInTheLanguageOfTheOptions) {
  cad_host::WindowOptions options;
  options.language = window::kSimplifiedChinese;
  Show(options);
  EXPECT_EQ(Title(), L"CAD 主机");
}

}  // namespace
