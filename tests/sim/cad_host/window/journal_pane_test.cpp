// The journal in the window.
#include "window/control_ids.h"
#include "window/journal_filter.h"
#include "window_fixture.h"

namespace {

using cad_host::JournalFilter;

class JournalPaneTest : public WindowTest {
 protected:
  HWND List() { return Window().Journal().List(); }
  HWND Pane() { return Window().Journal().Handle(); }

  void Filter(const wchar_t* text) { SetDlgItemTextW(Pane(), cad_host::kJournalFilter, text); }

  void Show(JournalFilter::Kind kind) {
    SendDlgItemMessageW(Pane(), cad_host::kJournalKind, CB_SETCURSEL, static_cast<WPARAM>(kind), 0);
    SendMessageW(Pane(), WM_COMMAND, MAKEWPARAM(cad_host::kJournalKind, CBN_SELCHANGE), 0);
  }
  using WindowTest::Show;
};

TEST_F(JournalPaneTest, ShowsCallsWithTheirResultsIndentedByDepth) {
  ShowWithAddIn();
  EXPECT_EQ(Cell(List(), 0), L"ISwAddin::ConnectToSW(1)");
  EXPECT_EQ(Cell(List(), 0, 1), L"S_OK, true");
  EXPECT_TRUE(Cell(List(), 1).starts_with(L"   I"));
}

TEST_F(JournalPaneTest, LeavesOutEnableMethodsUntilTheyAreWanted) {
  ShowWithAddIn();
  Do({L"new", L"part"});
  const int main = ListView_GetItemCount(List());
  Show(JournalFilter::Kind::kAll);
  const auto all = static_cast<std::size_t>(ListView_GetItemCount(List()));
  EXPECT_EQ(all, m_host->GetJournal().Entries().size());
  EXPECT_GT(all, static_cast<std::size_t>(main));
}

TEST_F(JournalPaneTest, IsFilteredByTextInAnyCaseAndByKind) {
  ShowWithAddIn();
  Do({L"new", L"part"});
  Filter(L"filenew");
  EXPECT_EQ(Column(List()), Texts{L"FileNewNotify2(part \"Part1\", 1, \"\")"});
  Filter(L"");
  Show(JournalFilter::Kind::kEvents);
  EXPECT_EQ(Column(List()), (Texts{L"FileNewNotify2(part \"Part1\", 1, \"\")", L"ActiveDocChangeNotify()",
                                   L"ActiveModelDocChangeNotify()"}));
}

TEST_F(JournalPaneTest, ShowsFailuresOnly) {
  ShowWithAddIn();
  Do({L"pick", L"Log In"});
  Do({L"new", L"part"});
  m_host->GetFaults().Fail(L"GetPathName", 1, E_FAIL);
  m_script.Always("QD_PLMImportCurrent", plm_client::Reply::Text(""));
  Do({L"pick", L"Import Current"});
  Show(JournalFilter::Kind::kFailures);
  EXPECT_EQ(Column(List()), Texts{L"   IModelDoc2::GetPathName()"});
  EXPECT_EQ(Cell(List(), 0, 1), L"0x80004005, null [fault]");
}

TEST_F(JournalPaneTest, ClearLeavesOutWhatWasThere) {
  ShowWithAddIn();
  SendMessageW(Pane(), WM_COMMAND, MAKEWPARAM(cad_host::kJournalClear, BN_CLICKED), 0);
  EXPECT_EQ(ListView_GetItemCount(List()), 0);
  Do({L"new", L"part"});
  EXPECT_EQ(Cell(List(), 0), L"FileNewNotify2(part \"Part1\", 1, \"\")");
}

TEST_F(JournalPaneTest, CopiesTheLines) {
  Show();
  Do({L"new", L"part"});
  Filter(L"FileNew");
  Window().Journal().Copy();
  ASSERT_TRUE(OpenClipboard(nullptr));
  HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  const std::wstring text = memory ? static_cast<const wchar_t*>(GlobalLock(memory)) : L"";
  CloseClipboard();
  EXPECT_EQ(text, L"event FileNewNotify2(part \"Part1\", 1, \"\")\r\n");
}

}  // namespace
