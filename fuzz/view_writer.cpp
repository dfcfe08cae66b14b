#include "view_writer.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace fuzz {
namespace {

/// A value of a member, and whether it is right.
struct Value {
  std::string json;
  bool is_right;
};

const Value kNames[] = {
    {R"("TAVO")", true}, {R"("\u0001\n\u001f")", true}, {R"("")", false}, {"7", false}, {"null", false}};
const Value kTexts[] = {{R"("a")", true}, {R"("")", true}, {"true", false}, {"[]", false}};
const Value kCommands[] = {{R"("Login")", true},
                           {R"("login")", false},
                           {R"("LoginEnable")", false},
                           {R"("\u0000\u000b\u001f")", false},
                           {R"("")", false},
                           {"{}", false}};
const Value kEnableMethods[] = {
    {R"("LoginEnable")", true}, {R"("Login")", false}, {R"("\u0009")", false}, {"1", false}};
const Value kOthers[] = {{"{}", true}, {"[0]", true}, {R"("\u0002")", true}};

class ViewWriter {
 public:
  ViewWriter(Choices choices, std::size_t maximum_items, int icons)
      : m_choices(choices),
        m_maximumItems(maximum_items),
        m_icons{{"0", true},
                {std::to_string(icons - 1), true},
                {std::to_string(icons), false},
                {"-1", false},
                {"0.5", false},
                {"1e9", false},
                {R"("0")", false},
                {"null", false}} {}

  WrittenView Write() {
    const std::vector<Member> members = {
        {"name", kNames}, {R"(\u001b)", kOthers, true}, {"other", kOthers, true}};
    std::string view = Object(members, true);
    std::string items;
    std::size_t count = 0;
    for (; count < 2 * m_maximumItems && m_choices.Below(8) != 0; ++count) {
      items += (count > 0 ? "," : "") + Item(count < m_maximumItems);
    }
    if (count > m_maximumItems) ++m_mistakes;
    return {"{" + view + (view.empty() ? "" : ",") + R"("Menu":[)" + items + "]}", m_mistakes};
  }

 private:
  struct Member {
    std::string name;
    std::span<const Value> values;
    bool may_be_missing = false;
  };

  std::string Item(bool counts) {
    const std::vector<Member> members = {{"name", kNames},
                                         {"ToolTip", kTexts},
                                         {"Hint", kTexts},
                                         {"CallbackFunction", kCommands},
                                         {"EnableMethod", kEnableMethods},
                                         {"ImageListIndex", m_icons},
                                         {R"(\u001b)", kOthers, true}};
    return "{" + Object(members, counts) + "}";
  }

  /// The members, some of them repeated or missing. @param counts whether their mistakes do.
  std::string Object(const std::vector<Member>& members, bool counts) {
    std::string json;
    const auto put = [&](const Member& member) {
      const Value& value = member.values[m_choices.Below(4) == 1 ? m_choices.Below(member.values.size()) : 0];
      json += (json.empty() ? "\"" : ",\"") + member.name + "\":" + value.json;
      return value.is_right;
    };
    for (const Member& member : members) {
      const bool is_there = m_choices.Below(8) != 1;
      bool is_right = is_there ? put(member) : member.may_be_missing;
      if (counts && !is_right) ++m_mistakes;
      if (!is_there || m_choices.Below(8) != 1) continue;
      put(member);
      if (counts) ++m_mistakes;
    }
    return json;
  }

  Choices m_choices;
  std::size_t m_maximumItems;
  std::vector<Value> m_icons;
  std::size_t m_mistakes = 0;
};

}  // namespace

WrittenView WriteView(Choices choices, std::size_t maximum_items, int icons) {
  return ViewWriter(choices, maximum_items, icons).Write();
}

}  // namespace fuzz
