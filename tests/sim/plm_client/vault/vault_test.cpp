#include "vault/vault.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "CStringHelper.h"
#include "temp_folder.h"

using namespace plm_vault;

namespace {

class VaultTest : public testing::Test {
 protected:
  VaultTest() {
    m_vault.AddUser({L"kim", L"Kim"});
    m_vault.AddUser({L"wang", L"\u738b"});
  }

  std::wstring NewFile(const std::wstring& name, const std::string& bytes = "content") const {
    return m_folder.Write(L"elsewhere\\" + name, bytes);
  }

  Item Import(const std::wstring& name, const std::string& bytes = "content") {
    return m_vault.Import(NewFile(name, bytes), L"kim", {}, {}).item;
  }

  Vault Reopened() const { return Vault::Open(m_folder.Path(L"vault")); }

  /// The message of the VaultError that `action` throws.
  template <class Action>
  static std::wstring FailureOf(const Action& action) {
    try {
      action();
    } catch (const VaultError& failure) {
      return failure.Message();
    }
    return L"no failure";
  }

  static void ExpectMentions(const std::wstring& message, const std::wstring& part) {
    EXPECT_NE(message.find(part), std::wstring::npos) << testing::PrintToString(message);
  }

  TempFolder m_folder;
  Vault m_vault = Vault::Create(m_folder.Path(L"vault"));
};

TEST_F(VaultTest, TakesAFileInAsANewItemWithTheNextNumberOfItsKind) {
  const Imported part = m_vault.Import(NewFile(L"bolt.sldprt"), L"kim", L"Bolt", L"first");
  EXPECT_TRUE(part.is_new);
  EXPECT_EQ(part.item.number, L"P-00001");
  EXPECT_EQ(part.item.name, L"Bolt");
  EXPECT_EQ(part.item.kind, ItemKind::kPart);
  EXPECT_EQ(part.item.revision, 1);
  EXPECT_EQ(Import(L"nut.SLDPRT").number, L"P-00002");
  EXPECT_EQ(Import(L"frame.sldasm").number, L"A-00001");
  EXPECT_EQ(Import(L"frame.slddrw").number, L"D-00001");
  EXPECT_EQ(Import(L"frame-2.sldasm").name, L"frame-2") << "without a name it is called as its file";
}

TEST_F(VaultTest, TakesAFileOfAKnownNameInAsTheNextRevision) {
  Import(L"bolt.sldprt", "first");
  const Imported next = m_vault.Import(NewFile(L"BOLT.sldprt", "second"), L"wang", L"", L"longer");
  EXPECT_FALSE(next.is_new);
  EXPECT_EQ(next.item.revision, 2);
  const std::vector<Revision> revisions = Reopened().Revisions(L"P-00001");
  ASSERT_EQ(revisions.size(), 2u);
  EXPECT_EQ(revisions[0].revision, 2);
  EXPECT_EQ(revisions[0].author, L"wang");
  EXPECT_EQ(revisions[0].comment, L"longer");
  EXPECT_EQ(m_folder.Read(L"vault\\files\\P-00001\\A\\bolt.sldprt"), "first");
  EXPECT_EQ(m_folder.Read(L"vault\\files\\P-00001\\B\\bolt.sldprt"), "second");
}

TEST_F(VaultTest, RefusesAFileThatIsMissingOrNoModelAndTakesNoNumberForIt) {
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  ExpectMentions(FailureOf([&] { m_vault.Import(missing, L"kim", {}, {}); }), missing);
  ExpectMentions(FailureOf([&] { Import(L"notes.txt"); }), L"notes.txt is no part, assembly or drawing");
  EXPECT_TRUE(m_vault.Search({}).empty());
  EXPECT_EQ(Import(L"bolt.sldprt").number, L"P-00001");
}

TEST_F(VaultTest, FindsItemsByEveryWordInNumberNameOrFile) {
  m_vault.Import(NewFile(L"\u652f\u67b6.sldprt"), L"kim", L"\u652f\u67b6 100%", {});
  m_vault.Import(NewFile(L"bolt.sldprt"), L"kim", L"Hexagon bolt M8", {});
  m_vault.Import(NewFile(L"nut.sldprt"), L"kim", L"Hexagon nut M8", {});
  EXPECT_EQ(m_vault.Search(L"hexagon").size(), 2u);
  ASSERT_EQ(m_vault.Search(L" m8  BOLT ").size(), 1u);
  EXPECT_EQ(m_vault.Search(L"00003")[0].name, L"Hexagon nut M8");
  EXPECT_EQ(m_vault.Search(L"\u652f\u67b6")[0].file_name, L"\u652f\u67b6.sldprt");
  EXPECT_EQ(m_vault.Search(L"0%").size(), 1u) << "a percent sign stands for itself";
  EXPECT_TRUE(m_vault.Search(L"_exagon").empty());
  EXPECT_EQ(m_vault.FindByFileName(L"BOLT.SLDPRT")->number, L"P-00002");
  ExpectMentions(FailureOf([&] { m_vault.Find(L"P-9"); }), L"P-9");
}

TEST_F(VaultTest, MarksWhatIsCheckedOutAndHandsItsFileOut) {
  Import(L"bolt.sldprt", "bytes");
  const std::filesystem::path file = m_vault.CheckOut(L"P-00001", L"kim");
  EXPECT_EQ(file, m_folder.Path(L"vault\\work\\bolt.sldprt"));
  EXPECT_EQ(m_folder.Read(L"vault\\work\\bolt.sldprt"), "bytes");
  const Vault reopened = Reopened();
  ASSERT_EQ(reopened.CheckedOutBy(L"kim").size(), 1u);
  EXPECT_FALSE(reopened.CheckedOutBy(L"kim")[0].checked_out_at.empty());
  EXPECT_TRUE(reopened.CheckedOutBy(L"wang").empty());
}

TEST_F(VaultTest, RefusesOthersWhileAnItemIsCheckedOut) {
  Import(L"bolt.sldprt");
  m_vault.CheckOut(L"P-00001", L"kim");
  ExpectMentions(FailureOf([&] { m_vault.CheckOut(L"P-00001", L"wang"); }), L"checked out by kim");
  ExpectMentions(FailureOf([&] { m_vault.UndoCheckOut(L"P-00001", L"wang"); }), L"P-00001");
  ExpectMentions(FailureOf([&] { m_vault.Import(NewFile(L"bolt.sldprt"), L"wang", {}, {}); }),
                 L"bolt.sldprt");
  EXPECT_EQ(m_vault.Find(L"P-00001").revision, 1);
  m_vault.UndoCheckOut(L"P-00001", L"kim");
  m_vault.CheckOut(L"P-00001", L"wang");
}

TEST_F(VaultTest, TakesTheCheckOutMarkAwayWithTheNextRevision) {
  Import(L"bolt.sldprt");
  m_vault.CheckOut(L"P-00001", L"kim");
  Import(L"bolt.sldprt", "changed");
  EXPECT_TRUE(m_vault.Find(L"P-00001").checked_out_by.empty());
}

TEST_F(VaultTest, LeavesAFileInTheWorkFolderAloneThatIsCheckedOutAndReplacesAnother) {
  const Item item = Import(L"bolt.sldprt", "from the vault");
  m_folder.Write(L"vault\\work\\bolt.sldprt", "changed by the user");
  m_vault.HandOut(item, 1);
  EXPECT_EQ(m_folder.Read(L"vault\\work\\bolt.sldprt"), "from the vault");
  m_vault.CheckOut(item.number, L"kim");
  m_folder.Write(L"vault\\work\\bolt.sldprt", "changed by the user");
  m_vault.HandOut(m_vault.Find(item.number), 1);
  EXPECT_EQ(m_folder.Read(L"vault\\work\\bolt.sldprt"), "changed by the user");
}

TEST_F(VaultTest, NamesTheFileThatCannotBeHandedOutBecauseAnotherProgramHasItOpen) {
  const Item item = Import(L"bolt.sldprt", "new");
  const std::wstring file = m_folder.Write(L"vault\\work\\bolt.sldprt", "old");
  const std::shared_ptr<void> open(
      CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr),
      &CloseHandle);
  ExpectMentions(FailureOf([&] { m_vault.HandOut(item, 1); }), file);
  EXPECT_EQ(m_folder.List(L"vault\\work"), std::vector<std::wstring>{L"bolt.sldprt"}) << "no half copy stays";
}

TEST_F(VaultTest, HandsAFileForCoveringOutInAnotherFolderUnderTheSameName) {
  Import(L"bolt.sldprt", "first");
  const Item item = Import(L"bolt.sldprt", "second");
  m_vault.HandOut(item, 1);
  const std::filesystem::path covering = m_vault.HandOutForCovering(item, 2);
  EXPECT_EQ(covering.filename(), m_vault.WorkFile(item).filename());
  EXPECT_NE(covering.parent_path(), m_vault.WorkFile(item).parent_path());
  EXPECT_EQ(m_folder.Read(L"vault\\work\\bolt.sldprt"), "first");
  EXPECT_EQ(m_folder.Read(L"vault\\work\\B\\bolt.sldprt"), "second");
}

TEST_F(VaultTest, HandsOutWhatAnItemRefersToDirectlyOrThroughOthers) {
  Import(L"bolt.sldprt");
  Import(L"frame.sldasm");
  const Item drawing = Import(L"frame.slddrw");
  m_vault.AddUse(L"A-00001", L"P-00001");
  m_vault.AddUse(L"D-00001", L"A-00001");
  m_vault.HandOut(drawing, 1);
  EXPECT_EQ(m_folder.List(L"vault\\work"),
            (std::vector<std::wstring>{L"bolt.sldprt", L"frame.sldasm", L"frame.slddrw"}));
}

TEST_F(VaultTest, GivesEachNumberOfASeriesOnceEvenToTwoPrograms) {
  Vault second = Reopened();
  EXPECT_EQ(m_vault.PeekNumber(L"C-"), L"C-0001");
  EXPECT_EQ(m_vault.NextNumber(L"C-"), L"C-0001");
  EXPECT_EQ(second.NextNumber(L"C-"), L"C-0002");
  EXPECT_EQ(m_vault.NextNumber(L"C-"), L"C-0003");
  EXPECT_EQ(m_vault.Series(), (std::vector<std::wstring>{L"A-", L"C-", L"D-", L"M-", L"P-", L"T-"}));
  ExpectMentions(FailureOf([&] { m_vault.NextNumber(L"X-"); }), L"X-");
}

TEST_F(VaultTest, KnowsAUserByTheTokenUntilTheLogOut) {
  const std::wstring token = m_vault.LogIn(L"wang");
  EXPECT_NE(m_vault.LogIn(L"wang"), token);
  EXPECT_EQ(Reopened().UserOfToken(token), L"wang");
  EXPECT_EQ(m_vault.UserOfToken(L"nonsense"), L"");
  m_vault.LogOut(L"wang");
  EXPECT_EQ(Reopened().UserOfToken(token), L"");
  ExpectMentions(FailureOf([&] { m_vault.LogIn(L"nobody"); }), L"nobody");
}

TEST_F(VaultTest, KeepsMaterialsWithTheirPropertiesInOrder) {
  const Properties properties = {{L"Weight", L"1.2 kg"}, {L"\u540d\u79f0", L"\u87ba\u6813"}, {L"A", L""}};
  const Material made = m_vault.CreateMaterial(L"Bolt", L"Fasteners", properties, L"kim");
  EXPECT_EQ(made.number, L"M-000001");
  const Vault reopened = Reopened();
  const std::vector<Material> found = reopened.FindMaterials(L"fasten bolt");
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].properties, properties);
  EXPECT_TRUE(reopened.FindMaterials(L"nut").empty());
}

TEST_F(VaultTest, ListsTemporaryMaterialsOfTheirUserUntilTheyAreKept) {
  m_vault.CreateMaterial(L"Bolt", L"", {}, L"kim");
  m_vault.CreateMaterial(L"Nut", L"", {}, L"wang");
  ASSERT_EQ(m_vault.TemporaryMaterials(L"kim").size(), 1u);
  m_vault.KeepMaterial(L"M-000001");
  EXPECT_TRUE(Reopened().TemporaryMaterials(L"kim").empty());
  EXPECT_EQ(Reopened().FindMaterials({}).size(), 2u);
}

TEST_F(VaultTest, MakesATaskOfAWorkflowAndReleasesItsItemsAtItsEnd) {
  Import(L"bolt.sldprt");
  const Task task = m_vault.StartWorkflow(L"release", L"Release the bolt", L"wang", {L"P-00001"}, L"kim");
  EXPECT_EQ(task.number, L"T-0001");
  EXPECT_EQ(m_vault.Find(L"P-00001").state, ItemState::kInReview);
  EXPECT_TRUE(m_vault.Tasks(L"kim").empty());
  ASSERT_EQ(Reopened().Tasks(L"wang").size(), 1u);
  EXPECT_EQ(Reopened().Tasks(L"wang")[0].items, std::vector<std::wstring>{L"P-00001"});
  m_vault.CompleteTask(L"T-0001");
  EXPECT_EQ(Reopened().Tasks(L"wang")[0].state, TaskState::kDone);
  EXPECT_EQ(Reopened().Find(L"P-00001").state, ItemState::kReleased);
}

TEST_F(VaultTest, UndoesAWorkflowThatCannotBeStarted) {
  Import(L"bolt.sldprt");
  FailureOf([&] { m_vault.StartWorkflow(L"release", L"x", L"nobody", {L"P-00001"}, L"kim"); });
  EXPECT_NE(FailureOf([&] {
              m_vault.StartWorkflow(L"release", L"x", L"kim", {L"P-00001", L"P-9"}, L"kim");
            }),
            L"no failure");
  EXPECT_EQ(m_vault.Find(L"P-00001").state, ItemState::kInWork);
  EXPECT_TRUE(m_vault.Tasks(L"kim").empty());
  EXPECT_EQ(m_vault.PeekNumber(L"T-"), L"T-0001");
}

TEST_F(VaultTest, NumbersChanges) {
  Import(L"bolt.sldprt");
  EXPECT_EQ(m_vault.CreateChange(L"Longer", {L"P-00001"}, L"kim"), L"C-0001");
  EXPECT_EQ(Reopened().CreateChange(L"Shorter", {L"P-00001"}, L"wang"), L"C-0002");
}

TEST_F(VaultTest, NamesTheFolderThatIsNoVaultAndTheDatabaseThatIsNone) {
  const std::wstring folder = m_folder.MakeFolder(L"empty");
  ExpectMentions(FailureOf([&] { Vault::Open(folder); }), folder);
  m_folder.Write(L"empty\\vault.db", "this is not a database, whatever its name says");
  ExpectMentions(FailureOf([&] { Vault::Open(folder); }), L"vault.db");
  ExpectMentions(FailureOf([&] { Vault::Create(m_folder.Path(L"vault")); }), L"vault.db is there already");
  const std::wstring file = m_folder.Write(L"file", "");
  ExpectMentions(FailureOf([&] { Vault::Create(file + L"\\vault"); }), file);
}

TEST_F(VaultTest, LivesInAFolderOfAnyName) {
  Vault vault = Vault::Create(m_folder.Path(L"\u56fe\u7eb8\u5e93 \u00fc"));
  vault.AddUser({L"kim", L"Kim"});
  vault.Import(NewFile(L"\u652f\u67b6.sldprt"), L"kim", {}, {});
  EXPECT_TRUE(m_folder.Exists(L"\u56fe\u7eb8\u5e93 \u00fc\\files\\P-00001\\A\\\u652f\u67b6.sldprt"));
  EXPECT_EQ(Vault::Open(m_folder.Path(L"\u56fe\u7eb8\u5e93 \u00fc")).Find(L"P-00001").name, L"\u652f\u67b6");
}

TEST(RevisionLabels, CountLikeTheColumnsOfATable) {
  const std::pair<int, const wchar_t*> pairs[] = {
      {1, L"A"}, {2, L"B"}, {26, L"Z"}, {27, L"AA"}, {703, L"AAA"}};
  for (const auto& [revision, label] : pairs) {
    EXPECT_EQ(RevisionLabel(revision), label);
    EXPECT_EQ(RevisionOfLabel(label), revision);
  }
  EXPECT_EQ(RevisionOfLabel(L"b"), 2);
  EXPECT_EQ(RevisionOfLabel(L"1"), 0);
  EXPECT_EQ(RevisionOfLabel(L""), 0);
}

}  // namespace
