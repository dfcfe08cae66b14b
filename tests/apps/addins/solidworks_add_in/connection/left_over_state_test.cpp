// What the add-in makes of the command ids and command tabs that earlier starts left in the host: every
// combination of them, with menus of one and of several items.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "cad_host/model_file.h"
#include "command_interface_fixture.h"
#include "list_difference.h"
#include "views.h"

namespace {

using Ids = std::vector<long>;

constexpr const wchar_t* kTitle = L"TAVO SolidWorks Integration";
constexpr const wchar_t* kOtherTab = L"part tab \"Sheet Metal\", hidden [7/2]";

// In the order in which the add-in builds the tabs.
constexpr long kTypes[] = {swDocASSEMBLY, swDocDRAWING, swDocPART};

/// The user ids that the host has saved for the items of the group.
struct SavedIds {
  const char* name;
  std::optional<Ids> ids;     ///< without a value: the host has saved nothing
  bool of_this_menu = false;  ///< as many ids as the menu has items, all 0
};

const SavedIds kSavedIds[] = {{"NothingSaved", std::nullopt},
                              {"NoIds", Ids{}},
                              {"Id0", Ids{0}},
                              {"Id7", Ids{7}},
                              {"ThreeIds0", Ids{0, 0, 0}},
                              {"IdsOfThisMenu", Ids{}, true}};

struct LeftOverTabs {
  const char* name;
  int of_each_type;
  bool removal_denied = false;  ///< RemoveCommandTab removes the tab and returns false
};

const LeftOverTabs kLeftOverTabs[] = {
    {"NoTabs", 0}, {"OneTab", 1}, {"TwoTabs", 2}, {"TabWhoseRemovalIsDenied", 1, true}};

using StartState = std::tuple<SavedIds, LeftOverTabs, int>;

std::wstring TabText(long type, const std::wstring& name, bool visible, const std::wstring& boxes) {
  return cad_host::DocumentTypeName(type) + L" tab \"" + name + L"\", " + (visible ? L"visible" : L"hidden") +
         boxes;
}

/// A box with a button for each command, its text below it.
std::wstring BoxText(const Ids& commands) {
  std::wstring text;
  for (const long id : commands) text += (text.empty() ? L"" : L" ") + std::to_wstring(id) + L"/2";
  return L" [" + text + L"]";
}

/// The rules for what a start does with what the host has kept, for a menu whose items all have the id 0.
class Rules {
 public:
  struct Tab {
    long type;
    std::wstring text;
  };

  Rules(std::optional<Ids> saved, std::vector<Tab> tabs)
      : m_saved(std::move(saved)), m_tabs(std::move(tabs)) {}

  /// A saved group that is not exactly the one id 0 is ignored.
  bool IgnoresPrevious() const { return m_saved && *m_saved != Ids{0}; }

  /// A tab is removed if nothing was saved, and whether or not there is one if the saved group is ignored.
  bool Removes(long type) const { return IgnoresPrevious() || (!m_saved && First(type) != m_tabs.end()); }

  bool RemovesAny() const {
    return std::any_of(std::begin(kTypes), std::end(kTypes), [this](long type) { return Removes(type); });
  }

  /// A start with a menu that has `commands`. @return the calls for the group and the tabs.
  Texts Start(const Ids& commands) {
    Texts calls = {L"GetCommandIDsCount(0)",
                   L"IGetGroupDataFromRegistry(0, " + std::to_wstring(m_saved ? m_saved->size() : 0) + L")",
                   std::wstring(L"CreateCommandGroup2(0, \"PLM\", \"PLM\", \"\", -1, ") +
                       (IgnoresPrevious() ? L"true)" : L"false)")};
    calls.insert(calls.end(), commands.size(), L"AddCommandItem");
    calls.insert(calls.end(), {L"put_HasToolbar(true)", L"put_HasMenu(true)", L"Activate()"});
    for (const long type : kTypes) StartTab(type, commands, calls);
    m_saved = Ids(commands.size(), 0);
    return calls;
  }

  Texts Tabs() const {
    Texts texts;
    for (const Tab& tab : m_tabs) texts.push_back(tab.text);
    return texts;
  }

 private:
  std::vector<Tab>::const_iterator First(long type) const {
    return std::find_if(m_tabs.begin(), m_tabs.end(), [&](const Tab& tab) { return tab.type == type; });
  }

  void StartTab(long type, const Ids& commands, Texts& calls) {
    const std::wstring arguments = std::to_wstring(type) + L", \"PLM\")";
    calls.push_back(L"GetCommandTab(" + arguments);
    if (Removes(type)) {
      const auto tab = First(type);
      const bool found = tab != m_tabs.end();
      calls.push_back(L"RemoveCommandTab(" +
                      (found ? L"command tab \"PLM\" of " + cad_host::DocumentTypeName(type) : L"null") +
                      L")");
      if (found) m_tabs.erase(tab);
    } else if (First(type) != m_tabs.end()) {
      return;
    }
    calls.insert(calls.end(), {L"AddCommandTab(" + arguments, L"AddCommandTabBox()", L"put_Visible(true)"});
    for (std::size_t item = 0; item < commands.size(); ++item) {
      calls.push_back(L"get_CommandID(" + std::to_wstring(item) + L")");
    }
    calls.push_back(L"IAddCommands");
    m_tabs.push_back({type, TabText(type, L"PLM", true, BoxText(commands))});
  }

  std::optional<Ids> m_saved;
  std::vector<Tab> m_tabs;  // those of the add-in's title, in the order in which they were made
};

class LeftOverState : public CommandInterfaceFixture, public testing::WithParamInterface<StartState> {
 protected:
  LeftOverState() {
    m_home.WriteConfiguration(L"View.json", ViewWithItems(Items()));
    m_folder.WriteText(L"commands.txt", StateFile());
    RestartHost();
  }

  static int Items() { return std::get<int>(GetParam()); }

  static std::optional<Ids> Saved() {
    const SavedIds& saved = std::get<SavedIds>(GetParam());
    return saved.of_this_menu ? Ids(static_cast<std::size_t>(Items()), 0) : saved.ids;
  }

  /// What the rules start with: the tabs that the state file has.
  static Rules RulesAtFirst() {
    std::vector<Rules::Tab> tabs;
    ForEachLeftOverTab([&](long type, long command) {
      tabs.push_back({type, TabText(type, L"PLM", false, BoxText({command}))});
    });
    return {Saved(), tabs};
  }

  /// Connects the add-in and compares what it did and what is there now with the rules.
  void ConnectBy(Rules& rules) {
    if (std::get<LeftOverTabs>(GetParam()).removal_denied && rules.RemovesAny()) {
      m_host->GetFaults().HideResult(L"ICommandManager::RemoveCommandTab", cad_host::Faults::kEvery);
    }
    m_host->GetJournal().Clear();
    const bool ignores_previous = rules.IgnoresPrevious();
    Connect();
    EXPECT_EQ(Group().ignores_previous, ignores_previous);
    EXPECT_SAME_ENTRIES(Calls(), rules.Start(Commands()));
    Texts tabs = rules.Tabs();
    tabs.insert(tabs.begin(), kOtherTab);
    EXPECT_SAME_ENTRIES(Tabs(), tabs);
    EXPECT_EQ(m_host->FindSavedGroup(*m_addIn, 0)->item_user_ids, Ids(static_cast<std::size_t>(Items()), 0));
    m_host->GetFaults().Clear();
  }

  /// The commands of the group; all of them are there.
  Ids Commands() const {
    Ids commands;
    for (const cad_host::CommandItem& item : Group().items) {
      EXPECT_NE(item.command_id, 0);
      commands.push_back(item.command_id);
    }
    EXPECT_EQ(commands.size(), static_cast<std::size_t>(Items()));
    return commands;
  }

  Texts Tabs() const {
    Texts texts;
    for (const auto& tab : m_host->Tabs()) {
      std::wstring boxes;
      for (const auto& box : tab->boxes) {
        std::wstring commands;
        for (const auto& command : box->commands) {
          commands += (commands.empty() ? L"" : L" ") + std::to_wstring(command.id) + L"/" +
                      std::to_wstring(command.text_style);
        }
        boxes += L" [" + commands + L"]";
      }
      texts.push_back(TabText(tab->document_type, tab->name, tab->visible, boxes));
    }
    return texts;
  }

  /// How many tabs of the title each document type has, and how many of them have only commands of the group.
  std::map<long, std::pair<int, int>> TabCounts() const {
    const Ids commands = Commands();
    std::map<long, std::pair<int, int>> counts;
    for (const auto& tab : m_host->Tabs()) {
      if (tab->name != L"PLM") continue;
      auto& [tabs, alive] = counts[tab->document_type];
      ++tabs;
      const auto& buttons = tab->boxes.at(0)->commands;
      alive += std::all_of(buttons.begin(), buttons.end(), [&](const cad_host::TabCommand& button) {
        return std::find(commands.begin(), commands.end(), button.id) != commands.end();
      });
    }
    return counts;
  }

 private:
  template <class Action>
  static void ForEachLeftOverTab(Action&& action) {
    long command = 100;  // of an earlier session; no item has it now
    for (const long type : {swDocPART, swDocASSEMBLY, swDocDRAWING}) {
      for (int tab = 0; tab < std::get<LeftOverTabs>(GetParam()).of_each_type; ++tab) action(type, ++command);
    }
  }

  /// The host's file of what it keeps. A tab of another add-in is always there.
  static std::wstring StateFile() {
    std::wstring text = L"last-command-id\t40000\n";
    if (const auto saved = Saved()) {
      text += L"group\t" + ClassId() + L"\t0\n";
      for (const long id : *saved) text += L"item\t" + std::to_wstring(id) + L"\t200\n";
    }
    text += L"tab\t1\tSheet Metal\t0\nbox\ncommand\t7\t2\n";
    ForEachLeftOverTab([&](long type, long command) {
      text += L"tab\t" + std::to_wstring(type) + L"\tPLM\t0\nbox\ncommand\t" + std::to_wstring(command) +
              L"\t2\n";
    });
    return text;
  }

  static std::wstring ClassId() {
    for (const cad_host::AddInEntry& entry : cad_host::Host::RegisteredAddIns()) {
      if (entry.title == kTitle) return entry.clsid;
    }
    ADD_FAILURE() << "the add-in is not registered";
    return {};
  }

  /// The calls for the group and the tabs, without the icons. Of calls with texts of items or with lists,
  /// only the name.
  Texts Calls() const {
    Texts calls;
    for (const auto& call : m_host->GetJournal().Calls()) {
      if (!call.method.starts_with(L"ICommand") || call.method.ends_with(L"IconList")) continue;
      const std::wstring name = call.method.substr(call.method.find(L"::") + 2);
      const bool only_name = name == L"AddCommandItem" || name == L"IAddCommands";
      calls.push_back(only_name ? name : name + L"(" + call.arguments + L")");
    }
    return calls;
  }
};

TEST_P(LeftOverState, IsTreatedByTheRulesAtEveryStart) {
  Rules rules = RulesAtFirst();
  ConnectBy(rules);
  Disconnect();
  EXPECT_EQ(m_host->Groups().size(), 0u);
  EXPECT_EQ(Tabs().size(), rules.Tabs().size() + 1) << "tabs stay in the host";
  ConnectBy(rules);
  Disconnect();
  RestartHost();
  ConnectBy(rules);
}

/// How many tabs there are is settled by the first start. Which of them work is settled by the second: a
/// start that finds the saved id 0 keeps tabs with commands that are gone.
TEST_P(LeftOverState, HasSettledAfterTheSecondStart) {
  Connect();
  const auto first = TabCounts();
  Disconnect();
  RestartHost();
  Connect();
  const auto second = TabCounts();
  Disconnect();
  RestartHost();
  Connect();
  EXPECT_EQ(TabCounts(), second);
  for (const long type : kTypes) {
    EXPECT_EQ(first.at(type).first, second.at(type).first);
    EXPECT_EQ(first.at(type).first, std::max(1, std::get<LeftOverTabs>(GetParam()).of_each_type));
  }
}

std::string StartStateName(const testing::TestParamInfo<StartState>& info) {
  const auto& [saved, tabs, items] = info.param;
  return std::string(saved.name) + "_" + tabs.name + "_" + (items == 1 ? "OneItem" : "TwoItems");
}

INSTANTIATE_TEST_SUITE_P(, LeftOverState,
                         testing::Combine(testing::ValuesIn(kSavedIds), testing::ValuesIn(kLeftOverTabs),
                                          testing::Values(1, 2)),
                         StartStateName);

}  // namespace
