// Command groups and command tabs, and what is stored about them for the next session.
#include "com/test_add_in.h"
#include "host/command_manager.h"
#include "host_fixture.h"

namespace {

constexpr long kGroup = 5;

class CommandsTest : public HostTest {
 protected:
  CommandsTest() { Connect(); }

  void TearDown() override {
    m_manager = nullptr;
    HostTest::TearDown();
  }

  void Connect() {
    m_connected = &Host().Connect(&m_addIn, L"Test add-in");
    Host().Application()->GetCommandManager(m_connected->cookie, &m_manager);
  }

  void RestartHost() {
    m_manager = nullptr;
    Restart();
    Connect();
  }

  ICommandGroupPtr CreateGroup(bool ignore_previous = false) {
    ICommandGroupPtr group;
    m_manager->CreateCommandGroup2(kGroup, CComBSTR(L"Group"), CComBSTR(L"Tip"), CComBSTR(L"Hint"), 3,
                                   ignore_previous ? VARIANT_TRUE : VARIANT_FALSE, &m_errors, &group);
    return group;
  }

  static long AddItem(const ICommandGroupPtr& group, const std::wstring& name, long user_id) {
    long index = -1;
    group->AddCommandItem(CComBSTR(name), -1, CComBSTR(L"hint"), CComBSTR(L"tip"), 4, CComBSTR(L"Run"),
                          CComBSTR(L"MayRun"), user_id, &index);
    return index;
  }

  static void Activate(const ICommandGroupPtr& group) {
    VARIANT_BOOL activated = VARIANT_FALSE;
    EXPECT_EQ(group->Activate(&activated), S_OK);
    EXPECT_EQ(activated, VARIANT_TRUE);
  }

  static long CommandId(const ICommandGroupPtr& group, long index) {
    long id = -1;
    EXPECT_EQ(group->get_CommandID(index, &id), S_OK);
    return id;
  }

  /// A group of two items, activated. @return their command ids.
  std::vector<long> ShowGroup(long first_user_id = 11, bool ignore_previous = false) {
    const ICommandGroupPtr group = CreateGroup(ignore_previous);
    AddItem(group, L"One", first_user_id);
    AddItem(group, L"Two", 12);
    Activate(group);
    return {CommandId(group, 0), CommandId(group, 1)};
  }

  struct Saved {
    VARIANT_BOOL found = VARIANT_FALSE;
    std::vector<long> user_ids;
    bool operator==(const Saved&) const = default;
  };
  Saved ReadSaved() {
    Saved saved;
    long count = -1;
    m_manager->GetCommandIDsCount(kGroup, &count);
    saved.user_ids.assign(static_cast<std::size_t>(count), -1);
    m_manager->IGetGroupDataFromRegistry(kGroup, count, saved.user_ids.data(), &saved.found);
    return saved;
  }

  ICommandTabPtr AddTab(long type, const std::wstring& name) {
    ICommandTabPtr tab;
    EXPECT_EQ(m_manager->AddCommandTab(type, CComBSTR(name), &tab), S_OK);
    return tab;
  }
  ICommandTabPtr GetTab(long type, const std::wstring& name) {
    ICommandTabPtr tab;
    EXPECT_EQ(m_manager->GetCommandTab(type, CComBSTR(name), &tab), S_OK);
    return tab;
  }

  TestAddIn m_addIn;
  cad_host::AddIn* m_connected = nullptr;
  ICommandManagerPtr m_manager;
  long m_errors = -1;
};

TEST_F(CommandsTest, KeepsAllDataOfAGroup) {
  const ICommandGroupPtr group = CreateGroup(true);
  EXPECT_EQ(AddItem(group, L"One", 11), 0);
  EXPECT_EQ(AddItem(group, L"Two", 12), 1);
  group->put_HasToolbar(VARIANT_TRUE);
  group->put_HasMenu(VARIANT_TRUE);
  Activate(group);

  ASSERT_EQ(Host().Groups().size(), 1u);
  const cad_host::CommandGroup& shown = *Host().Groups()[0];
  EXPECT_EQ(shown.user_id, kGroup);
  EXPECT_EQ(shown.title, L"Group");
  EXPECT_EQ(shown.tool_tip, L"Tip");
  EXPECT_EQ(shown.hint, L"Hint");
  EXPECT_EQ(shown.position, 3);
  EXPECT_TRUE(shown.ignores_previous);
  EXPECT_TRUE(shown.has_toolbar);
  EXPECT_TRUE(shown.has_menu);
  EXPECT_TRUE(shown.active);
  ASSERT_EQ(shown.items.size(), 2u);
  const cad_host::CommandItem& item = shown.items[1];
  EXPECT_EQ(item.name, L"Two");
  EXPECT_EQ(item.position, -1);
  EXPECT_EQ(item.hint, L"hint");
  EXPECT_EQ(item.tool_tip, L"tip");
  EXPECT_EQ(item.image_index, 4);
  EXPECT_EQ(item.callback, L"Run");
  EXPECT_EQ(item.enable_method, L"MayRun");
  EXPECT_EQ(item.user_id, 12);
}

TEST_F(CommandsTest, ItemsHaveNoCommandIdBeforeTheGroupIsActivated) {
  const ICommandGroupPtr group = CreateGroup();
  const long index = AddItem(group, L"One", 11);
  EXPECT_EQ(CommandId(group, index), 0);
  Activate(group);
  EXPECT_GT(CommandId(group, index), 0);
  EXPECT_EQ(CommandId(group, 7), 0) << "no such item";
}

TEST_F(CommandsTest, AnExistingGroupCannotBeCreatedAgain) {
  CreateGroup();
  EXPECT_EQ(m_errors, 1);
  EXPECT_FALSE(CreateGroup());
  EXPECT_EQ(m_errors, 2);
}

TEST_F(CommandsTest, RemovingAGroupKeepsItsStoredUserIds) {
  ShowGroup();
  VARIANT_BOOL removed = VARIANT_FALSE;
  m_manager->RemoveCommandGroup(kGroup, &removed);
  EXPECT_EQ(removed, VARIANT_TRUE);
  EXPECT_TRUE(Host().Groups().empty());
  EXPECT_EQ(ReadSaved(), (Saved{VARIANT_TRUE, {11, 12}}));
  m_manager->RemoveCommandGroup(kGroup, &removed);
  EXPECT_EQ(removed, VARIANT_FALSE);
}

TEST_F(CommandsTest, StoresTheUserIdsOfTheItemsForTheNextSession) {
  EXPECT_EQ(ReadSaved(), (Saved{VARIANT_FALSE, {}}));
  ShowGroup();
  RestartHost();
  EXPECT_TRUE(Host().Groups().empty());
  EXPECT_EQ(ReadSaved(), (Saved{VARIANT_TRUE, {11, 12}}));
  ASSERT_NE(Host().FindSavedGroup(*m_connected, kGroup), nullptr);
  EXPECT_EQ(Host().FindSavedGroup(*m_connected, kGroup)->item_user_ids, (std::vector<long>{11, 12}));
}

TEST_F(CommandsTest, AGroupThatWasNotActivatedIsNotStored) {
  AddItem(CreateGroup(), L"One", 11);
  RestartHost();
  EXPECT_EQ(ReadSaved(), (Saved{VARIANT_FALSE, {}}));
}

TEST_F(CommandsTest, TheSameItemsKeepTheirCommandIdsInTheNextSession) {
  const auto before = ShowGroup();
  RestartHost();
  EXPECT_EQ(ShowGroup(), before);
  RestartHost();
  EXPECT_NE(ShowGroup(11, /*ignore_previous=*/true), before);
}

TEST_F(CommandsTest, OtherItemsGetNewCommandIds) {
  const auto before = ShowGroup();
  RestartHost();
  EXPECT_NE(ShowGroup(10), before);
}

TEST_F(CommandsTest, ReadsTheIconFilesWhenTheyAreSet) {
  std::string bitmap(54, '\0');
  bitmap.replace(0, 2, "BM");
  bitmap[14] = 40;  // size of the header that follows
  bitmap[18] = 32;  // width
  bitmap[22] = 16;  // height
  const std::wstring good = m_folder.Write(L"icons.bmp", bitmap);
  const std::wstring bad = m_folder.WriteText(L"icons.txt", L"not a bitmap");
  const ICommandGroupPtr group = CreateGroup();
  group->put_LargeIconList(CComBSTR(good));
  group->put_SmallIconList(CComBSTR(bad));

  const cad_host::CommandGroup& shown = *Host().Groups()[0];
  EXPECT_TRUE(shown.large_icons.is_bitmap);
  EXPECT_EQ(shown.large_icons.width, 32);
  EXPECT_EQ(shown.large_icons.height, 16);
  m_folder.Write(L"icons.bmp", "deleted");
  EXPECT_EQ(shown.large_icons.file, bitmap) << "what was in the file when it was set";
  EXPECT_FALSE(shown.small_icons.is_bitmap);
  EXPECT_TRUE(Journal().Contains(L"note: not a bitmap: \"" + bad));
  CComBSTR path;
  group->get_LargeIconList(&path);
  EXPECT_EQ(path.View(), good);
}

TEST_F(CommandsTest, TabNamesAreNotUniqueAndTheFirstIsFound) {
  const ICommandTabPtr first = AddTab(swDocPART, L"Tab");
  const ICommandTabPtr second = AddTab(swDocPART, L"Tab");
  EXPECT_NE(first.GetInterfacePtr(), second.GetInterfacePtr());
  EXPECT_EQ(Host().Tabs().size(), 2u);
  EXPECT_EQ(GetTab(swDocPART, L"Tab").GetInterfacePtr(), first.GetInterfacePtr());
  EXPECT_FALSE(GetTab(swDocASSEMBLY, L"Tab"));
  EXPECT_FALSE(GetTab(swDocPART, L"tab"));
}

TEST_F(CommandsTest, RemovesATabAndIgnoresNull) {
  Host().GetQuirks().Set(cad_host::Quirk::kFalseTabRemoval, false);
  const ICommandTabPtr first = AddTab(swDocPART, L"Tab");
  const ICommandTabPtr second = AddTab(swDocPART, L"Tab");
  VARIANT_BOOL removed = VARIANT_FALSE;
  EXPECT_EQ(m_manager->RemoveCommandTab(first, &removed), S_OK);
  EXPECT_EQ(removed, VARIANT_TRUE);
  EXPECT_EQ(GetTab(swDocPART, L"Tab").GetInterfacePtr(), second.GetInterfacePtr());
  EXPECT_EQ(m_manager->RemoveCommandTab(nullptr, &removed), S_OK);
  EXPECT_EQ(removed, VARIANT_FALSE);
  EXPECT_EQ(Host().Tabs().size(), 1u);
}

TEST_F(CommandsTest, StoresTabsWithTheirBoxesForTheNextSession) {
  {
    const ICommandTabPtr tab = AddTab(swDocDRAWING, L"Tab");
    tab->put_Visible(VARIANT_TRUE);
    ICommandTabBoxPtr box;
    tab->AddCommandTabBox(&box);
    long ids[] = {101, 102};
    long styles[] = {swCommandTabButton_TextBelow, swCommandTabButton_NoText};
    VARIANT_BOOL added = VARIANT_FALSE;
    EXPECT_EQ(box->IAddCommands(2, ids, styles, &added), S_OK);
    EXPECT_EQ(added, VARIANT_TRUE);
    EXPECT_EQ(box->IAddCommands(2, nullptr, styles, &added), E_POINTER);
  }
  RestartHost();
  ASSERT_EQ(Host().Tabs().size(), 1u);
  const cad_host::CommandTab& tab = *Host().Tabs()[0];
  EXPECT_EQ(tab.document_type, swDocDRAWING);
  EXPECT_EQ(tab.name, L"Tab");
  EXPECT_TRUE(tab.visible);
  ASSERT_EQ(tab.boxes.size(), 1u);
  ASSERT_EQ(tab.boxes[0]->commands.size(), 2u);
  EXPECT_EQ(tab.boxes[0]->commands[0].id, 101);
  EXPECT_EQ(tab.boxes[0]->commands[0].text_style, swCommandTabButton_TextBelow);
  EXPECT_EQ(tab.boxes[0]->commands[1].id, 102);
  CComBSTR name;
  GetTab(swDocDRAWING, L"Tab")->get_Name(&name);
  EXPECT_EQ(name.View(), L"Tab");
}

TEST_F(CommandsTest, FailsIfTheStateFileIsNotValid) {
  m_folder.WriteText(L"other\\commands.txt", L"nonsense\n");
  try {
    cad_host::Host host({.state_folder = m_folder.Path(L"other")});
    FAIL() << "started";
  } catch (const cad_host::HostError& error) {
    EXPECT_NE(error.Message().find(m_folder.Path(L"other\\commands.txt")), std::wstring::npos);
    EXPECT_NE(error.Message().find(L"nonsense"), std::wstring::npos);
  }
}

}  // namespace
