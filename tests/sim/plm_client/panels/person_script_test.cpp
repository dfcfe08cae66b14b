#include "panels/person_script.h"

#include <gtest/gtest.h>

#include "temp_folder.h"

using namespace plm_panels;

namespace {

std::string FaultOf(const std::string& text) {
  try {
    PersonScript::Parse(text, "day.txt");
  } catch (const std::runtime_error& fault) {
    return fault.what();
  }
  return "no fault";
}

TEST(PersonScript, ReadsFieldsRowsAndActionsInTheirOrder) {
  PersonScript script = PersonScript::Parse(
      "# a remark\r\n\r\nQD_PLMQuery search=\"frame 600\" open \"frame.sldasm\" \"a b.sldprt\" revision=B "
      "\"x\"\r\n",
      "");
  const auto line = script.Next("QD_PLMQuery");
  ASSERT_TRUE(line.has_value());
  ASSERT_EQ(line->choices.size(), 4u);
  EXPECT_EQ(line->choices[0].field, L"search");
  EXPECT_EQ(line->choices[0].value, L"frame 600");
  EXPECT_EQ(line->choices[1].rows, (std::vector<std::wstring>{L"frame.sldasm", L"a b.sldprt"}));
  EXPECT_EQ(line->choices[2].value, L"B");
  EXPECT_EQ(line->choices[3].rows, std::vector<std::wstring>{L"x"});
  EXPECT_EQ(line->actions, std::vector<std::wstring>{L"open"});
}

TEST(PersonScript, GivesTheLinesOfACommandInTurnThenNone) {
  PersonScript script = PersonScript::Parse("A one\nB other\nA two\n", "");
  EXPECT_EQ(script.Next("A")->actions[0], L"one");
  EXPECT_EQ(script.Next("A")->actions[0], L"two");
  EXPECT_FALSE(script.Next("A").has_value()) << "the person has to choose";
  EXPECT_EQ(script.Next("B")->actions[0], L"other");
}

TEST(PersonScript, TakesWhatStandsInQuotesAsItIs) {
  PersonScript script = PersonScript::Parse("A name= group=\"a=b\" \"c=d\" \"\" done", "");
  const auto line = script.Next("A");
  EXPECT_EQ(line->choices[0].value, L"");
  EXPECT_EQ(line->choices[1].value, L"a=b");
  EXPECT_EQ(line->choices[2].rows, (std::vector<std::wstring>{L"c=d", L""}));
}

TEST(PersonScript, NamesTheLineThatIsWrong) {
  EXPECT_EQ(FaultOf("A one\n\nA \"open\n"), "day.txt, line 3: a quote is not closed");
  EXPECT_EQ(FaultOf("A user=kim"), "day.txt, line 1: there is no action");
}

TEST(PersonScript, NamesTheFileThatCannotBeRead) {
  const TempFolder folder;
  folder.WriteText(L"day.txt", L"\ufeffA \"\u652f\u67b6\" open");
  EXPECT_EQ(PersonScript::Read(folder.Path(L"day.txt")).Next("A")->choices[0].rows[0], L"\u652f\u67b6");
  EXPECT_THROW(PersonScript::Read(folder.Path(L"missing.txt")), std::runtime_error);
}

}  // namespace
