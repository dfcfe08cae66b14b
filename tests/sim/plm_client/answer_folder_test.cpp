#include "plm_client/answer_folder.h"

#include <gtest/gtest.h>

#include "temp_folder.h"

using plm_client::AnswerFolder;

namespace {

TEST(AnswerFolder, ReturnsNumberedFilesInTurnThenTheFileWithoutANumber) {
  const TempFolder folder;
  folder.Write(L"QD_PLMQuery.json", "{ \"plain\" : \xC3\xBC }\r\n");
  folder.Write(L"QD_PLMQuery.1.json", "first");
  folder.Write(L"QD_PLMQuery.3.json", "third");
  AnswerFolder answers(folder.Path());
  const char* const expected[] = {"first", "{ \"plain\" : \xC3\xBC }\r\n", "third",
                                  "{ \"plain\" : \xC3\xBC }\r\n"};
  for (const char* const text : expected) EXPECT_EQ(answers.Next("QD_PLMQuery").text, text);
  EXPECT_EQ(answers.Next("QD_PLMQuery").file, "QD_PLMQuery.json");
}

TEST(AnswerFolder, CountsTheCallsOfEachCommand) {
  const TempFolder folder;
  folder.Write(L"A.1.json", "a");
  folder.Write(L"B.1.json", "b");
  AnswerFolder answers(folder.Path());
  EXPECT_EQ(answers.Next("A").text, "a");
  EXPECT_EQ(answers.Next("B").text, "b");
}

TEST(AnswerFolder, ReturnsNothingWithoutAFile) {
  const TempFolder folder;
  AnswerFolder answers(folder.Path());
  EXPECT_EQ(answers.Next("QD_PLMQuery").text, "");
  EXPECT_EQ(answers.Next("QD_PLMQuery").file, "");
}

TEST(AnswerFolder, ReadsTheFileEachTimeAndSkipsItsByteOrderMark) {
  const TempFolder folder;
  AnswerFolder answers(folder.Path());
  folder.Write(L"A.json", "\xEF\xBB\xBF{}");
  EXPECT_EQ(answers.Next("A").text, "{}");
  folder.Write(L"A.json", "");
  EXPECT_EQ(answers.Next("A").text, "");
  EXPECT_EQ(answers.Next("A").file, "A.json");
}

TEST(AnswerFolder, NeverReadsOutsideTheFolder) {
  const TempFolder folder;
  folder.Write(L"secret.json", "secret");
  AnswerFolder answers(folder.MakeFolder(L"answers"));
  EXPECT_EQ(answers.Next("..\\secret").text, "");
  EXPECT_EQ(answers.Next("../secret").text, "");
}

}  // namespace
