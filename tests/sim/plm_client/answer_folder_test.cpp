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
  for (const char* const text : expected) EXPECT_EQ(answers.Next("QD_PLMQuery", 1).text, text);
  EXPECT_EQ(answers.Next("QD_PLMQuery", 1).file, "QD_PLMQuery.json");
}

TEST(AnswerFolder, CountsTheCallsOfEachCommand) {
  const TempFolder folder;
  folder.Write(L"A.1.json", "a");
  folder.Write(L"B.1.json", "b");
  AnswerFolder answers(folder.Path());
  EXPECT_EQ(answers.Next("A", 1).text, "a");
  EXPECT_EQ(answers.Next("B", 1).text, "b");
}

TEST(AnswerFolder, BeginsAnewWithEachConnection) {
  const TempFolder folder;
  folder.Write(L"A.1.json", "first");
  folder.Write(L"A.2.json", "second");
  AnswerFolder answers(folder.Path());
  EXPECT_EQ(answers.Next("A", 1).text, "first");
  EXPECT_EQ(answers.Next("A", 2).text, "first");
  EXPECT_EQ(answers.Next("A", 1).text, "second");
  EXPECT_EQ(answers.Next("A", 2).text, "second");
}

TEST(AnswerFolder, ReturnsNothingWithoutAFile) {
  const TempFolder folder;
  AnswerFolder answers(folder.Path());
  EXPECT_EQ(answers.Next("QD_PLMQuery", 1).text, "");
  EXPECT_EQ(answers.Next("QD_PLMQuery", 1).file, "");
}

TEST(AnswerFolder, ReadsTheFileEachTimeAndSkipsItsByteOrderMark) {
  const TempFolder folder;
  AnswerFolder answers(folder.Path());
  folder.Write(L"A.json", "\xEF\xBB\xBF{}");
  EXPECT_EQ(answers.Next("A", 1).text, "{}");
  folder.Write(L"A.json", "");
  EXPECT_EQ(answers.Next("A", 1).text, "");
  EXPECT_EQ(answers.Next("A", 1).file, "A.json");
}

TEST(AnswerFolder, NeverReadsOutsideTheFolder) {
  const TempFolder folder;
  folder.Write(L"secret.json", "secret");
  AnswerFolder answers(folder.MakeFolder(L"answers"));
  EXPECT_EQ(answers.Next("..\\secret", 1).text, "");
  EXPECT_EQ(answers.Next("../secret", 1).text, "");
}

}  // namespace
