// View.json, as far as it can be looked at without the add-in.
#include <gtest/gtest.h>

#include <memory>

#include "configuration/view_faults.h"

namespace {

std::unique_ptr<CJsonObject> Parsed(const wchar_t* text) {
  auto view = std::make_unique<CJsonObject>();
  view->CreateFrom(text);
  return view;
}

const ViewRules kRules = {.maximum_items = 2,
                          .icons = 4,
                          .is_command = [](const std::wstring& name) { return name == L"Go"; },
                          .is_enable_method = [](const std::wstring& name) { return name == L"CanGo"; }};

TEST(ViewSlips, AreUnknownKeysThatResembleKnownOnes) {
  EXPECT_EQ(FindViewSlips(*Parsed(LR"({"Name":"x","own":1,"$schema":"s",
                                      "Menu":[{"name":"A","tooltip":"t"},{"name":"B","Hints":"h","own":1}]})")),
            (std::vector<std::wstring>{L"\"Name\" is not known; \"name\" is",
                                       L"item 1 \"A\": \"tooltip\" is not known; \"ToolTip\" is",
                                       L"item 2 \"B\": \"Hints\" is not known; \"Hint\" is"}));
}

TEST(ViewSlips, AreFoundInAViewWithoutAMenu) {
  EXPECT_EQ(FindViewSlips(*Parsed(LR"({"name":"x","menu":[]})")),
            std::vector<std::wstring>{L"\"menu\" is not known; \"Menu\" is"});
}

TEST(ViewFaults, OfAMenuThatCannotBeBuiltAreOneFault) {
  EXPECT_EQ(FindViewFaults(*Parsed(L"[]"), kRules).size(), 1u);
  EXPECT_EQ(FindViewFaults(*Parsed(LR"({"name":"x"})"), kRules).size(), 1u);
  EXPECT_EQ(FindViewFaults(*Parsed(LR"({"name":"x","Menu":[1]})"), kRules),
            std::vector<std::wstring>{L"json member [Menu] has an element that is no object"});
}

TEST(ViewFaults, OfAGoodMenuAreNone) {
  EXPECT_TRUE(FindViewFaults(*Parsed(LR"({"name":"x","Menu":[{"name":"A","ToolTip":"t","Hint":"h",
      "CallbackFunction":"Go","EnableMethod":"CanGo","ImageListIndex":3}]})"),
                             kRules)
                  .empty());
}

}  // namespace
