// The command interface if the host saved command ids and tabs on an earlier start.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "command_interface_fixture.h"
#include "list_difference.h"
#include "views.h"

namespace {

class SavedCommandInterface : public CommandInterfaceFixture {
 protected:
  /// Disconnects and restarts the host, which keeps its saved state.
  void Restart() {
    Disconnect();
    RestartHost();
  }
};

TEST_F(SavedCommandInterface, DoesNotIgnoreThePreviousGroupOnTheFirstStart) {
  ConnectWith(ViewWithItems(3));
  EXPECT_FALSE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{});
}

TEST_F(SavedCommandInterface, ReplacesTabsOfItsTitleIfTheHostHasSavedNoIds) {
  ConnectWith(ViewWithItems(3));
  Restart();
  m_host->GetFaults().ReturnNothing(L"ICommandManager::IGetGroupDataFromRegistry");
  Connect();
  EXPECT_FALSE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab").size(), 3u);
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

TEST_F(SavedCommandInterface, DoesNotChangeTabsOfOtherTitles) {
  ConnectWith(ViewWithItems(1, "Sheet Metal"));
  Restart();
  ConnectWith(ViewWithItems(1, "PLM"));
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{});
  EXPECT_EQ(m_host->Tabs().size(), 6u);
}

TEST_F(SavedCommandInterface, WithSeveralItemsIsRebuiltOnEveryLaterStart) {
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

TEST_F(SavedCommandInterface, RemovesEachTabBeforeItAddsTheNewOne) {
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
TEST_F(SavedCommandInterface, WithoutItemsIsRebuiltOnALaterStart) {
  ConnectWith(ViewWithItems(0));
  Restart();
  ConnectWith(ViewWithItems(1));
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::IGetGroupDataFromRegistry"), Texts{L"0, 0"});
  EXPECT_TRUE(Group().ignores_previous);
}

TEST_F(SavedCommandInterface, WithOneItemKeepsItsTabsOnALaterStart) {
  ConnectWith(ViewWithItems(1));
  Restart();
  Connect();
  EXPECT_FALSE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{});
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::AddCommandTab"), Texts{});
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

/// The host saved the id of an item that this add-in does not have.
TEST_F(SavedCommandInterface, WithAnotherIdIsRebuiltOnALaterStart) {
  ConnectWith(ViewWithItems(1));
  Restart();
  m_host->GetFaults().ChangeResults(
      L"ICommandManager::IGetGroupDataFromRegistry", 1,
      [](const std::vector<void*>& results) { *static_cast<long*>(results.at(0)) = 7; });
  Connect();
  EXPECT_TRUE(Group().ignores_previous);
  EXPECT_EQ(ArgumentsOf(L"ICommandManager::RemoveCommandTab").size(), 3u);
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

TEST_F(SavedCommandInterface, RemovesANullTabIfItRebuildsTheGroupAndFindsNoTab) {
  ConnectWith(ViewWithItems(3, "Old"));
  Restart();
  ConnectWith(ViewWithItems(3, "New"));
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandManager::RemoveCommandTab"), Texts{L"null", L"null", L"null"});
  EXPECT_EQ(m_host->Tabs().size(), 6u) << "the tabs of the old title stay in the host";
}

TEST_F(SavedCommandInterface, AddsATabEvenIfTheHostReportsThatItRemovedNone) {
  ConnectWith(ViewWithItems(3));
  Restart();
  m_host->GetFaults().HideResult(L"ICommandManager::RemoveCommandTab", cad_host::Faults::kEvery);
  Connect();
  EXPECT_EQ(m_host->Tabs().size(), 3u);
}

}  // namespace
