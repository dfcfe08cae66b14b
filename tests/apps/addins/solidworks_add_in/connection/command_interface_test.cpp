// The menu, toolbar and command tabs that View.json describes.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "list_difference.h"
#include "views.h"

namespace {

constexpr const char* kTwoItems = R"({
  "name": "Prüfung 图纸",
  "Menu": [
    {"name": "Log in", "ToolTip": "tip 1", "Hint": "hint 1", "CallbackFunction": "PlmLogin",
     "EnableMethod": "EnablePlmLogin", "ImageListIndex": 3},
    {"name": "登出", "ToolTip": "tip 2", "Hint": "hint 2", "CallbackFunction": "PlmLogOut",
     "EnableMethod": "EnablePlmLogOut", "ImageListIndex": -1}
  ]
})";

class CommandInterface : public AddInFixture {
 protected:
  void ConnectWith(std::string_view view) {
    m_home.WriteConfiguration(L"View.json", view);
    Connect();
  }

  const cad_host::CommandGroup& Group() const { return *m_host->Groups().at(0); }

  /// Disconnects and restarts the host, which keeps its saved state.
  void Restart() {
    Disconnect();
    RestartHost();
  }

  /// The arguments of each call of the method.
  Texts ArgumentsOf(std::wstring_view method) const {
    Texts arguments;
    for (const auto& call : m_host->GetJournal().Calls(method)) arguments.push_back(call.arguments);
    return arguments;
  }
};

TEST_F(CommandInterface, IsAGroupWithTheTitleAndItemsOfTheFile) {
  ConnectWith(kTwoItems);
  ASSERT_EQ(m_host->Groups().size(), 1u);
  const auto& group = Group();
  EXPECT_EQ(group.user_id, 0);
  EXPECT_EQ(group.title, L"Prüfung 图纸");
  EXPECT_EQ(group.tool_tip, group.title);
  EXPECT_EQ(group.hint, L"");
  EXPECT_EQ(group.position, -1);
  EXPECT_TRUE(group.has_toolbar);
  EXPECT_TRUE(group.has_menu);
  EXPECT_TRUE(group.active);
  EXPECT_EQ(ArgumentsOf(L"ICommandGroup::AddCommandItem"),
            (Texts{L"\"Log in\", -1, \"hint 1\", \"tip 1\", 3, \"PlmLogin\", \"EnablePlmLogin\", 0",
                   L"\"登出\", -1, \"hint 2\", \"tip 2\", -1, \"PlmLogOut\", \"EnablePlmLogOut\", 0"}));
}

TEST_F(CommandInterface, SetsAStripOfSixteenIconsForBothIconLists) {
  ConnectWith(kTwoItems);
  for (const auto* icons : {&Group().large_icons, &Group().small_icons}) {
    EXPECT_TRUE(icons->is_bitmap) << Utf8(icons->path);
    EXPECT_EQ(icons->width, 512);
    EXPECT_EQ(icons->height, 32);
  }
  EXPECT_NE(Group().large_icons.path, Group().small_icons.path);
  EXPECT_EQ(m_home.IconFiles().size(), 2u);
}

TEST_F(CommandInterface, HasATabForAssembliesDrawingsAndPartsInThatOrder) {
  ConnectWith(kTwoItems);
  const Texts types = {L"2, \"Prüfung 图纸\"", L"3, \"Prüfung 图纸\"", L"1, \"Prüfung 图纸\""};
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandManager::GetCommandTab"), types);
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandManager::AddCommandTab"), types);
  ASSERT_EQ(m_host->Tabs().size(), 3u);
  for (const auto& tab : m_host->Tabs()) {
    EXPECT_TRUE(tab->visible);
    ASSERT_EQ(tab->boxes.size(), 1u);
    const auto& commands = tab->boxes[0]->commands;
    ASSERT_EQ(commands.size(), 2u);
    for (std::size_t place = 0; place < 2; ++place) {
      EXPECT_EQ(commands[place].id, Group().items[place].command_id);
      EXPECT_EQ(commands[place].text_style, 2);
    }
  }
}

TEST_F(CommandInterface, AddsFourteenItemsInTheirOrder) {
  ConnectWith(ViewWithItems(14));
  Texts items;
  std::vector<long> ids;
  for (int index = 0; index < 14; ++index) {
    const std::wstring number = std::to_wstring(index);
    items.push_back(L"\"Item " + number + L"\", -1, \"hint " + number + L"\", \"tip " + number + L"\", " +
                    number + L", \"PlmLogin\", \"EnablePlmLogin\", 0");
    ids.push_back(Group().items.at(static_cast<std::size_t>(index)).command_id);
  }
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandGroup::AddCommandItem"), items);
  ASSERT_EQ(m_host->Tabs().size(), 3u);
  for (const auto& tab : m_host->Tabs()) {
    std::vector<long> in_tab;
    for (const auto& command : tab->boxes.at(0)->commands) {
      in_tab.push_back(command.id);
      EXPECT_EQ(command.text_style, 2);
    }
    EXPECT_EQ(in_tab, ids);
  }
}

TEST_F(CommandInterface, AddsSixteenItems) {
  ConnectWith(ViewWithItems(16));
  EXPECT_EQ(Group().items.size(), 16u);
  for (const auto& tab : m_host->Tabs()) EXPECT_EQ(tab->boxes.at(0)->commands.size(), 16u);
  EXPECT_EQ(PlatformLog().size(), 0u);
}

TEST_F(CommandInterface, LeavesOutAndLogsItemsAfterTheSixteenth) {
  ConnectWith(ViewWithItems(40));
  EXPECT_EQ(Group().items.size(), 16u);
  EXPECT_EQ(Group().items.back().name, L"Item 15");
  for (const auto& tab : m_host->Tabs()) EXPECT_EQ(tab->boxes.at(0)->commands.size(), 16u);
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(PlatformLog()[0].find(m_home.ConfigurationPath(L"View.json")), std::wstring::npos);
  EXPECT_NE(PlatformLog()[0].find(L"40 items"), std::wstring::npos);
}

TEST_F(CommandInterface, WithAnEmptyMenuIsAnActiveGroupAndTabsWithAnEmptyBox) {
  ConnectWith(R"({"name":"PLM","Menu":[]})");
  EXPECT_TRUE(Group().active);
  EXPECT_TRUE(Group().items.empty());
  EXPECT_EQ(m_host->Tabs().size(), 3u);
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandTabBox::IAddCommands"), Texts{L"[], []", L"[], []", L"[], []"});
}

TEST_F(CommandInterface, OfTheInstalledDefaultHasAllFourteenCommands) {
  Connect();
  ASSERT_EQ(Group().items.size(), 14u);
  for (const auto& item : Group().items) {
    EXPECT_EQ(Enabled(item.enable_method), item.callback == L"PlmLogin" ? 1 : 0) << Utf8(item.enable_method);
    EXPECT_FALSE(item.name.empty() || item.tool_tip.empty() || item.hint.empty()) << Utf8(item.callback);
    EXPECT_GE(item.image_index, 0);
    EXPECT_LT(item.image_index, 16);
  }
}

// Command ids and tabs that the host saved in earlier starts.

TEST_F(CommandInterface, DoesNotIgnoreThePreviousGroupOnTheFirstStart) {
  ConnectWith(ViewWithItems(3));
  EXPECT_FALSE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{});
}

TEST_F(CommandInterface, ReplacesTabsOfItsTitleIfTheHostHasSavedNoIds) {
  ConnectWith(ViewWithItems(3));
  Restart();
  m_host->GetFaults().ReturnNothing(L"ICommandManager::IGetGroupDataFromRegistry");
  Connect();
  EXPECT_FALSE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab").size(), 3u);
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

TEST_F(CommandInterface, DoesNotChangeTabsOfOtherTitles) {
  ConnectWith(ViewWithItems(1, "Sheet Metal"));
  Restart();
  ConnectWith(ViewWithItems(1, "PLM"));
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{});
  EXPECT_EQ(m_host->Tabs().size(), 6u);
}

TEST_F(CommandInterface, WithSeveralItemsIsRebuiltOnEveryLaterStart) {
  ConnectWith(ViewWithItems(3));
  for (int start = 2; start <= 4; ++start) {
    Restart();
    Connect();
    EXPECT_EQ(ArgumentsOf(L"ICommandManager::IGetGroupDataFromRegistry"), Texts{L"0, 3"});
    EXPECT_TRUE(Group().ignores_previous);
    EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab").size(), 3u);
    EXPECT_EQ(m_host->Tabs().size(), 3u) << "no tab is duplicated or lost";
  }
}

TEST_F(CommandInterface, RemovesEachTabBeforeItAddsTheNewOne) {
  ConnectWith(ViewWithItems(2));
  Restart();
  Connect();
  Texts calls;
  for (const auto& call : m_host->GetJournal().Calls()) {
    const bool of_tabs = call.method.find(L"CommandTab") != std::wstring::npos &&
                         call.method.starts_with(L"ICommandManager::");
    if (of_tabs) calls.push_back(call.method.substr(17) + L" " + call.arguments);
  }
  Texts expected;
  for (const auto& [type, name] : {std::pair(L"2", L"assembly"), {L"3", L"drawing"}, {L"1", L"part"}}) {
    const std::wstring tab = std::wstring(type) + L", \"PLM\"";
    expected.insert(expected.end(), {L"GetCommandTab " + tab,
                                     L"RemoveCommandTab command tab \"PLM\" of " + std::wstring(name),
                                     L"AddCommandTab " + tab});
  }
  EXPECT_SAME_ENTRIES(calls, expected);
}

/// The host has saved a group without items; its empty list of ids differs from the ids of one item.
TEST_F(CommandInterface, WithoutItemsIsRebuiltOnALaterStart) {
  ConnectWith(ViewWithItems(0));
  Restart();
  ConnectWith(ViewWithItems(1));
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::IGetGroupDataFromRegistry"), Texts{L"0, 0"});
  EXPECT_TRUE(Group().ignores_previous);
}

TEST_F(CommandInterface, WithOneItemKeepsItsTabsOnALaterStart) {
  ConnectWith(ViewWithItems(1));
  Restart();
  Connect();
  EXPECT_FALSE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{});
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::AddCommandTab"), Texts{});
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

TEST_F(CommandInterface, RemovesANullTabIfItRebuildsTheGroupAndFindsNoTab) {
  ConnectWith(ViewWithItems(3, "Old"));
  Restart();
  ConnectWith(ViewWithItems(3, "New"));
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{L"null", L"null", L"null"});
  EXPECT_EQ(m_host->Tabs().size(), 6u) << "the tabs of the old title stay in the host";
}

TEST_F(CommandInterface, AddsATabEvenIfTheHostReportsThatItRemovedNone) {
  ConnectWith(ViewWithItems(3));
  Restart();
  m_host->GetFaults().HideResult(L"ICommandManager::RemoveCommandTab", cad_host::Faults::kEvery);
  Connect();
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

TEST_F(CommandInterface, RemovesItsGroupButNotItsTabsOnDisconnecting) {
  ConnectWith(ViewWithItems(3));
  Disconnect();
  EXPECT_EQ(m_host->Groups().size(), 0u);
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

TEST_F(CommandInterface, IsBuiltWithoutIconsIfNoIconFileCanBeCreated) {
  const ScopedEnvironment tmp(L"TMP", L"C:\\no such folder");
  const ScopedEnvironment temp(L"TEMP", L"C:\\no such folder");
  ConnectWith(kTwoItems);
  EXPECT_EQ(ArgumentsOf(L"ICommandGroup::put_LargeIconList"), Texts{L"\"\""});
  EXPECT_EQ(ArgumentsOf(L"ICommandGroup::put_SmallIconList"), Texts{L"\"\""});
  EXPECT_EQ(Group().items.size(), 2u);
}

}  // namespace
