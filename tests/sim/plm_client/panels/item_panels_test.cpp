#include "CStringHelper.h"
#include "panel_fixture.h"
#include "panels/text_ids.h"

using namespace plm_panels;
using namespace plm_vault;

namespace {

class ItemPanelsTest : public PanelTest {
 protected:
  ItemPanelsTest() {
    Import(L"bolt.sldprt", "first");
    Import(L"bolt.sldprt", "second");
    Import(L"nut.sldprt");
    Import(L"frame.sldasm");
    Import(L"frame.slddrw");
  }

  static bool IsEnabled(const Panel& panel, const std::wstring& name) {
    for (const Action& action : panel.Actions()) {
      if (action.name == name) return action.is_enabled;
    }
    ADD_FAILURE() << "there is no such action";
    return false;
  }
};

class SelectorsTest : public ItemPanelsTest, public testing::WithParamInterface<const char*> {};

TEST_P(SelectorsTest, AnswerWithTheFilesInTheMemberOfTheAction) {
  const std::pair<const wchar_t*, std::string> cases[] = {
      {L"open", R"({"OpenFile":[")" + JsonPath(L"work\\bolt.sldprt") + R"("]})"},
      {L"insert", R"({"InsertFile":[")" + JsonPath(L"work\\bolt.sldprt") + R"("]})"},
      {L"replace", R"({"ReplaceFile":[")" + JsonPath(L"work\\bolt.sldprt") + R"("]})"},
      {L"cover", R"({"ReplaceFileByCovering":[")" + JsonPath(L"work\\B\\bolt.sldprt") + R"("]})"},
  };
  for (const auto& [action, answer] : cases) {
    const auto panel = Make(GetParam());
    SelectRows(*panel, {L"P-00001"});
    EXPECT_EQ(Compact(panel->Preview(action)), answer);
    EXPECT_EQ(AnswerOf(*panel, action), answer);
  }
  EXPECT_EQ(m_folder.Read(L"vault\\work\\bolt.sldprt"), "second")
      << "the files are there when the answer is sent";
  EXPECT_EQ(m_folder.Read(L"vault\\work\\B\\bolt.sldprt"), "second");
}

TEST_P(SelectorsTest, ChangeNothingUntilAnActionIsPerformed) {
  const auto panel = Make(GetParam());
  SelectRows(*panel, {L"P-00001"});
  for (const Action& action : panel->Actions()) panel->Preview(action.name);
  EXPECT_FALSE(m_folder.Exists(L"vault\\work"));
  EXPECT_TRUE(m_vault.CheckedOutBy(L"kim").empty());
}

TEST_P(SelectorsTest, AnswerWithSeveralFilesInTheOrderOfTheList) {
  const auto panel = Make(GetParam());
  SelectRows(*panel, {L"P-00001", L"A-00001"});
  EXPECT_EQ(AnswerOf(*panel, L"open"), R"({"OpenFile":[")" + JsonPath(L"work\\frame.sldasm") + R"(",")" +
                                           JsonPath(L"work\\bolt.sldprt") + R"("]})");
}

TEST_P(SelectorsTest, HandOutAnOlderRevisionIfThePersonChoosesIt) {
  const auto panel = Make(GetParam());
  SelectRows(*panel, {L"P-00001"});
  panel->SetField(L"revision", L"A");
  panel->Perform(L"open");
  EXPECT_EQ(m_folder.Read(L"vault\\work\\bolt.sldprt"), "first");
  SelectRows(*panel, {L"P-00002"});
  EXPECT_EQ(panel->Fields()[2].value, L"A");
  EXPECT_THROW(panel->SetField(L"revision", L"B"), VaultError) << "the nut has no revision B";
}

TEST_P(SelectorsTest, FindBySearchAndKindAndKeepTheSelectionThatIsStillThere) {
  const auto panel = Make(GetParam());
  EXPECT_EQ(panel->RowCount(), 4u);
  SelectRows(*panel, {L"P-00001"});
  panel->SetField(L"search", L"bolt");
  ASSERT_EQ(panel->RowCount(), 1u);
  EXPECT_EQ(panel->Selection(), std::vector<std::size_t>{0});
  panel->SetField(L"kind", L"drawing");
  EXPECT_EQ(panel->RowCount(), 0u);
  EXPECT_TRUE(panel->Selection().empty());
  EXPECT_THROW(panel->SetField(L"kind", L"fish"), VaultError);
  EXPECT_THROW(panel->SetField(L"colour", L"red"), VaultError);
}

TEST_P(SelectorsTest, EnableWhatIsPossibleWithTheSelection) {
  const auto panel = Make(GetParam());
  for (const Action& action : panel->Actions()) EXPECT_FALSE(action.is_enabled);
  SelectRows(*panel, {L"P-00001"});
  for (const Action& action : panel->Actions()) EXPECT_TRUE(action.is_enabled);
  SelectRows(*panel, {L"P-00001", L"P-00002"});
  EXPECT_TRUE(IsEnabled(*panel, L"insert"));
  EXPECT_FALSE(IsEnabled(*panel, L"cover"));
  SelectRows(*panel, {L"D-00001"});
  EXPECT_TRUE(IsEnabled(*panel, L"open"));
  EXPECT_FALSE(IsEnabled(*panel, L"insert"));
  EXPECT_EQ(FailureOf(*panel, L"insert"), L"\"insert\" is not possible now");
  EXPECT_EQ(FailureOf(*panel, L"dance"), L"there is no action \"dance\"");
}

TEST_P(SelectorsTest, CheckOutAndStayOpen) {
  const auto panel = Make(GetParam());
  SelectRows(*panel, {L"P-00001"});
  EXPECT_EQ(AnswerOf(*panel, L"check-out"), "stays");
  EXPECT_FALSE(panel->Message().empty());
  EXPECT_EQ(m_vault.Find(L"P-00001").checked_out_by, L"kim");
  EXPECT_EQ(panel->Cell(panel->Selection().at(0), 5), L"kim") << "the list shows it at once";
  EXPECT_EQ(AnswerOf(*panel, L"undo-check-out"), "stays");
  EXPECT_EQ(m_vault.Find(L"P-00001").checked_out_by, L"");
}

TEST_P(SelectorsTest, SayWhoHasTheItemAndStayUsable) {
  m_vault.CheckOut(L"P-00001", L"wang");
  const auto panel = Make(GetParam());
  SelectRows(*panel, {L"P-00001"});
  EXPECT_NE(FailureOf(*panel, L"check-out").find(L"wang"), std::wstring::npos);
  EXPECT_NE(AnswerOf(*panel, L"open"), "stays");
}

TEST_P(SelectorsTest, ShowThePropertiesOfTheLatestFileAndTheRevisions) {
  m_properties[L"bolt.sldprt"] = {{L"Material", L"8.8"}};
  const auto panel = Make(GetParam());
  EXPECT_TRUE(panel->Details().empty());
  SelectRows(*panel, {L"P-00001"});
  const Properties details = panel->Details();
  ASSERT_EQ(details.size(), 3u);
  EXPECT_EQ(details[0], (Properties::value_type{L"Material", L"8.8"}));
  EXPECT_TRUE(details[1].first.ends_with(L" B"));
}

INSTANTIATE_TEST_SUITE_P(Commands, SelectorsTest, testing::Values("QD_PLMDataSelector", "QD_PLMQuery"),
                         [](const auto& command) { return std::string(command.param); });

TEST_F(ItemPanelsTest, MyCheckOutListOpensAndGivesBackWhatTheUserHas) {
  m_vault.CheckOut(L"P-00001", L"kim");
  m_vault.CheckOut(L"P-00002", L"wang");
  const auto panel = Make("QD_PLMMyCheckOutList");
  ASSERT_EQ(panel->RowCount(), 1u);
  SelectRows(*panel, {L"P-00001"});
  EXPECT_EQ(AnswerOf(*panel, L"open"), R"({"OpenFile":[")" + JsonPath(L"work\\bolt.sldprt") + R"("]})");
  EXPECT_EQ(AnswerOf(*panel, L"undo-check-out"), "stays");
  EXPECT_EQ(panel->RowCount(), 0u);
  EXPECT_TRUE(m_vault.CheckedOutBy(L"kim").empty());
}

TEST_F(ItemPanelsTest, AWorkflowThatIsStartedIsATaskWhoseDocumentsCanBeOpened) {
  const auto start = Make("QD_PLMStartWF");
  SelectRows(*start, {L"P-00001", L"D-00001"});
  start->SetField(L"title", L"Release the bolt");
  start->SetField(L"assignee", L"wang");
  EXPECT_EQ(Compact(start->Preview(L"start")), R"({"task":"T-0001","items":["D-00001","P-00001"]})");
  EXPECT_TRUE(m_vault.Tasks(L"wang").empty());
  EXPECT_EQ(AnswerOf(*start, L"start"), R"({"task":"T-0001","items":["D-00001","P-00001"]})");

  m_session.user = L"wang";
  const auto tasks = Make("QD_PLMTaskManage");
  ASSERT_EQ(tasks->RowCount(), 1u);
  EXPECT_EQ(tasks->Cell(0, 1), L"Release the bolt");
  SelectRows(*tasks, {L"T-0001"});
  EXPECT_EQ(tasks->Details().size(), 2u);
  EXPECT_EQ(AnswerOf(*tasks, L"open"), R"({"OpenFile":[")" + JsonPath(L"work\\frame.slddrw") + R"(",")" +
                                           JsonPath(L"work\\bolt.sldprt") + R"("]})");
  EXPECT_TRUE(m_folder.Exists(L"vault\\work\\frame.slddrw"));
  EXPECT_EQ(AnswerOf(*tasks, L"complete"), "stays");
  EXPECT_EQ(m_vault.Find(L"P-00001").state, ItemState::kReleased);
  EXPECT_EQ(FailureOf(*tasks, L"complete"), L"\"complete\" is not possible now");
}

TEST_F(ItemPanelsTest, ImportTakesTheDocumentOfTheRequest) {
  const std::wstring file = m_folder.Write(L"host\\\u652f\u67b6.slddrw", "drawing");
  const std::string path = JsonPath(L"..\\host\\\u652f\u67b6.slddrw");
  const auto panel =
      Make("QD_PLMImportCurrent", R"({"file_path":")" + path + R"(","Method":"LotinputDrawing"})");
  EXPECT_EQ(panel->Fields()[1].value, std::to_wstring(IDS_NEW_ITEM));
  panel->SetField(L"name", L"Bracket, drawn");
  EXPECT_EQ(AnswerOf(*panel, L"import"), R"({"__InvokeResult__":true,"number":"D-00002","revision":"A"})");
  EXPECT_EQ(m_vault.Find(L"D-00002").name, L"Bracket, drawn");

  const auto again = Make("QD_PLMImportCurrent", R"({"file_path":")" + path + R"("})");
  again->SetField(L"comment", L"corrected");
  EXPECT_EQ(AnswerOf(*again, L"import"), R"({"__InvokeResult__":true,"number":"D-00002","revision":"B"})");
  EXPECT_EQ(m_vault.Revisions(L"D-00002")[0].comment, L"corrected");
}

TEST_F(ItemPanelsTest, ImportWithoutADocumentIsNotPossible) {
  const auto panel = Make("QD_PLMImportCurrent", "");
  EXPECT_EQ(FailureOf(*panel, L"import"), L"\"import\" is not possible now");
}

TEST_F(ItemPanelsTest, ChangeItemsImportAndNumberTheChange) {
  m_folder.Write(L"vault\\work\\bolt.sldprt", "third");
  const auto panel =
      Make("QD_PLMCreateChangeItems", R"({"file_path":")" + JsonPath(L"work\\bolt.sldprt") + R"("})");
  EXPECT_EQ(AnswerOf(*panel, L"import"),
            R"({"__InvokeResult__":true,"number":"P-00001","revision":"C","change":"C-0001"})");
}

TEST_F(ItemPanelsTest, LotImportTakesTheChosenFilesOfAFolder) {
  m_folder.Write(L"lot\\a.sldprt", "a");
  m_folder.Write(L"lot\\b.sldasm", "b");
  m_folder.Write(L"lot\\bolt.sldprt", "third");
  m_folder.Write(L"lot\\notes.txt", "");
  const auto panel = Make("QD_PLMLotimport");
  panel->SetField(L"folder", m_folder.Path(L"lot"));
  ASSERT_EQ(panel->RowCount(), 3u);
  m_properties[L"a.sldprt"] = {{L"Material", L"S235JR"}};
  SelectRows(*panel, {L"a.sldprt"});
  EXPECT_EQ(panel->Details(), m_properties[L"a.sldprt"]);
  SelectRows(*panel, {L"a.sldprt", L"bolt.sldprt"});
  EXPECT_EQ(Compact(panel->Preview(L"import")), R"({"__InvokeResult__":true})");
  EXPECT_EQ(AnswerOf(*panel, L"import"), R"({"__InvokeResult__":true,"numbers":["P-00003","P-00001"]})");
  EXPECT_EQ(m_vault.Find(L"P-00001").revision, 3);
  panel->SetField(L"folder", m_folder.Path(L"missing"));
  EXPECT_EQ(panel->RowCount(), 0u);
}

}  // namespace
