// The schema of View.json takes what the add-in takes without a fault. The exceptions are the cases at the
// end.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <vector>

#include "CJsonObject.h"
#include "CZALException.h"
#include "case_name.h"
#include "configuration/view_faults.h"
#include "method_names.h"
#include "schema_case.h"

namespace {

constexpr int kIcons = 16;

using Members = std::map<std::string, std::string>;  // JSON by key

std::string ObjectOf(const Members& members) {
  std::string json;
  for (const auto& [key, value] : members) {
    if (!value.empty()) json += (json.empty() ? "\"" : ",\"") + key + "\":" + value;
  }
  return "{" + json + "}";
}

/// An item without a fault but `changed`, in which an empty value leaves the key out.
std::string Item(const Members& changed = {}) {
  Members members = {{"name", R"("Search")"},
                     {"ToolTip", R"("Search the system")"},
                     {"Hint", R"("Search for files")"},
                     {"CallbackFunction", R"("PlmQuery")"},
                     {"EnableMethod", R"("EnablePlmQuery")"},
                     {"ImageListIndex", "6"}};
  for (const auto& [key, value] : changed) members[key] = value;
  return ObjectOf(members);
}

/// A menu of one item.
std::string View(const Members& changed = {}) { return R"({"name":"PLM","Menu":[)" + Item(changed) + "]}"; }

std::string ViewWithItems(std::size_t count) {
  std::string items;
  for (std::size_t item = 0; item < count; ++item) items += (item == 0 ? "" : ",") + Item();
  return R"({"name":"PLM","Menu":[)" + items + "]}";
}

/// Adds each key of an item, missing and of another type.
void AddItemKeyCases(std::vector<SchemaCase>& cases) {
  for (const std::string key :
       {"name", "ToolTip", "Hint", "CallbackFunction", "EnableMethod", "ImageListIndex"}) {
    cases.push_back({key + "Missing", View({{key, ""}}), TakenBy::kNobody});
    cases.push_back({key + "Null", View({{key, "null"}}), TakenBy::kNobody});
  }
}

std::vector<SchemaCase> Cases() {
  using enum TakenBy;
  std::vector<SchemaCase> cases = {
      {"Complete", View(), kBoth},
      {"ByteOrderMark", "\xEF\xBB\xBF" + View(), kBoth},
      {"TextsInAnyLanguage", View({{"name", R"("搜索")"}, {"Hint", R"("Übersicht 😀")"}}), kBoth},
      {"NamesTheSchema", R"({"$schema":"schemas/View.schema.json","name":"PLM","Menu":[]})", kBoth},
      {"OtherKeys", R"({"name":"PLM","x":[1],"Menu":[)" + Item({{"y", "null"}}) + "]}", kBoth},
      {"NoItems", R"({"name":"PLM","Menu":[]})", kBoth},
      {"SixteenItems", ViewWithItems(16), kBoth},
      {"SeventeenItems", ViewWithItems(17), kNobody},
      {"NotJson", "name = PLM", kNobody},
      {"NotAnObject", "[]", kNobody},
      {"MenuMissing", R"({"name":"PLM"})", kNobody},
      {"MenuInOtherCase", R"({"name":"PLM","menu":[]})", kNobody},
      {"MenuNotAnArray", R"({"name":"PLM","Menu":{}})", kNobody},
      {"MenuNull", R"({"name":"PLM","Menu":null})", kNobody},
      {"ItemNotAnObject", R"({"name":"PLM","Menu":["PlmLogin"]})", kNobody},
      {"TitleMissing", R"({"Menu":[]})", kNobody},
      {"TitleEmpty", R"({"name":"","Menu":[]})", kNobody},
      {"TitleNotAText", R"({"name":5,"Menu":[]})", kNobody},
      {"NameEmpty", View({{"name", R"("")"}}), kNobody},
      {"ToolTipEmpty", View({{"ToolTip", R"("")"}}), kBoth},
      {"HintEmpty", View({{"Hint", R"("")"}}), kBoth},
      {"ToolTipInOtherCase", View({{"ToolTip", ""}, {"Tooltip", R"("x")"}}), kNobody},
      {"CommandEmpty", View({{"CallbackFunction", R"("")"}}), kNobody},
      {"CommandUnknown", View({{"CallbackFunction", R"("PlmQuerry")"}}), kNobody},
      {"CommandWithMoreText", View({{"CallbackFunction", R"("PlmQuery ")"}}), kNobody},
      {"CommandIsAnEnableMethod", View({{"CallbackFunction", R"("EnablePlmQuery")"}}), kNobody},
      {"CommandOfAnotherRow", View({{"CallbackFunction", R"("PlmWf")"}}), kBoth},
      {"EnableMethodEmpty", View({{"EnableMethod", R"("")"}}), kNobody},
      {"EnableMethodUnknown", View({{"EnableMethod", R"("EnablePlmImportCurrent")"}}), kNobody},
      {"EnableMethodIsACommand", View({{"EnableMethod", R"("PlmQuery")"}}), kNobody},
      {"IconLowest", View({{"ImageListIndex", "0"}}), kBoth},
      {"IconHighest", View({{"ImageListIndex", "15"}}), kBoth},
      {"IconTooLow", View({{"ImageListIndex", "-1"}}), kNobody},
      {"IconTooHigh", View({{"ImageListIndex", "16"}}), kNobody},
      {"IconAFraction", View({{"ImageListIndex", "2.5"}}), kNobody},
      {"IconBeyond32Bits", View({{"ImageListIndex", "4294967297"}}), kNobody},
      {"IconAText", View({{"ImageListIndex", R"("6")"}}), kNobody},

      // The schema recommends the spelling of the add-in's methods.
      {"CommandInOtherCase", View({{"CallbackFunction", R"("plmquery")"}}), kOnlyAddIn},
      {"EnableMethodInOtherCase", View({{"EnableMethod", R"("ENABLEPLMQUERY")"}}), kOnlyAddIn},
      // A schema judges values, not their spelling: it sees no key twice, and 6.0 is a whole number to it.
      {"KeyTwice", R"({"name":"PLM","name":"B","Menu":[]})", kOnlySchema},
      {"KeyTwiceInAnItem", View({{"Hint", R"("a","Hint":"b")"}}), kOnlySchema},
      {"IconWithAPoint", View({{"ImageListIndex", "6.0"}}), kOnlySchema},
      {"HalfOfACharacter", View({{"Hint", R"("\ud83d")"}}), kOnlySchema},
  };
  AddItemKeyCases(cases);
  return cases;
}

/// Whether `names` has `name`, without regard to case.
bool Has(const std::set<std::string>& names, const std::wstring& name) {
  const auto same = [](char a, wchar_t b) {
    return std::towlower(static_cast<wchar_t>(a)) == std::towlower(b);
  };
  return std::ranges::any_of(names, [&](const std::string& n) { return std::ranges::equal(n, name, same); });
}

/// What the add-in finds wrong in a file; empty if nothing.
std::vector<std::wstring> FaultsIn(const std::filesystem::path& file) {
  static const MethodNames names = DefinedMethods();
  const ViewRules rules{kMaximumMenuItems, kIcons,
                        [](const std::wstring& name) { return Has(names.commands, name); },
                        [](const std::wstring& name) { return Has(names.enable_methods, name); }};
  try {
    CJsonObject view;
    view.CreateFromFile(file.wstring());
    return FindViewFaults(view, view.GetObjectArray(L"Menu"), rules);
  } catch (const CZALException& exception) {
    return {exception.GetErrorMessage()};
  }
}

class ViewSchema : public testing::TestWithParam<SchemaCase> {};

TEST_P(ViewSchema, TakesWhatTheAddInTakes) {
  static const SchemaVerdicts verdicts(Cases(), "View.schema.json", FaultsIn);
  verdicts.Expect(GetParam());
}

INSTANTIATE_TEST_SUITE_P(, ViewSchema, testing::ValuesIn(Cases()), CaseName<SchemaCase>);

}  // namespace
