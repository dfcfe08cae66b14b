// The menu, toolbar and command tabs that View.json describes.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "case_name.h"
#include "command_interface_fixture.h"
#include "import_patch.h"
#include "list_difference.h"
#include "log_line.h"
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

class CommandInterface : public CommandInterfaceFixture {};

/// The bytes of the bitmap resource `id` of the add-in.
std::string Strip(WORD id) {
  const HMODULE dll = GetModuleHandleW(L"solidworks_add_in.dll");
  HRSRC resource = FindResourceW(dll, MAKEINTRESOURCEW(id), RT_BITMAP);
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(dll, resource)));
  return {bytes, SizeofResource(dll, resource)};
}

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
    EXPECT_EQ(ReadFileBytes(icons->path).substr(sizeof(BITMAPFILEHEADER)), Strip(254));
  }
  EXPECT_NE(Strip(254), Strip(255));
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

/// A host whose command indices are not the positions of the items.
TEST_F(CommandInterface, AsksForTheCommandIdsOfTheIndicesThatTheHostGave) {
  m_host->GetFaults().ChangeResults(L"ICommandGroup::AddCommandItem", cad_host::Faults::kEvery,
                                    [](const std::vector<void*>& results) {
                                      long& index = *static_cast<long*>(results.at(0));
                                      index = 70 - index;
                                    });
  ConnectWith(kTwoItems);
  EXPECT_SAME_ENTRIES(ArgumentsOf(L"ICommandGroup::get_CommandID"),
                      Texts{L"70", L"69", L"70", L"69", L"70", L"69"});
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

/// For which text of View.json the system has no memory.
struct NoMemoryFor {
  const char* name;
  const wchar_t* text;
};

class CommandInterfaceText : public CommandInterfaceFixture, public testing::WithParamInterface<NoMemoryFor> {
 protected:
  /// In place of the system's function: fails for the text of this case.
  static BSTR WINAPI Allocate(const OLECHAR* text, UINT length) {
    if (std::wstring_view(text ? text : L"", length) == GetParam().text) return nullptr;
    return SysAllocStringLen(text, length);
  }
};

TEST_P(CommandInterfaceText, WithoutMemoryMakesConnectingFail) {
  m_home.WriteConfiguration(L"View.json", kTwoItems);
  {
    const ImportPatch patch(GetModuleHandleW(L"solidworks_add_in.dll"), "SysAllocStringLen", &Allocate);
    EXPECT_EQ(TryToConnect(), E_OUTOFMEMORY);
  }
  ASSERT_FALSE(PlatformLog().empty());
  const std::wstring line = PlatformLog().back();
  EXPECT_NE(line.find(L"|connecting to the host failed: "), std::wstring::npos) << Utf8(line);
  EXPECT_TRUE(line.ends_with(CodeText(E_OUTOFMEMORY))) << Utf8(line);
  EXPECT_TRUE(m_host->HeldReferences().empty());
}

INSTANTIATE_TEST_SUITE_P(, CommandInterfaceText,
                         testing::Values(NoMemoryFor{"Title", L"Prüfung 图纸"},
                                         NoMemoryFor{"HintOfTheGroup", L""}, NoMemoryFor{"Name", L"登出"},
                                         NoMemoryFor{"ToolTip", L"tip 2"}, NoMemoryFor{"Hint", L"hint 2"},
                                         NoMemoryFor{"Callback", L"PlmLogOut"},
                                         NoMemoryFor{"EnableMethod", L"EnablePlmLogOut"}),
                         CaseName<NoMemoryFor>);

}  // namespace
