// PlmClient.json, as its reader understands it.
#include <gtest/gtest.h>

#include "configuration/client_configuration.h"

namespace {

ClientFile Read(const wchar_t* text) {
  CJsonObject file;
  EXPECT_TRUE(file.CreateFrom(text));
  return ReadClientMembers(file);
}

TEST(ClientMembers, AreReadWithoutAFault) {
  const ClientFile file = Read(LR"({"$schema":"s","pipe":"a","client":"%HOME%\\b.exe","startTimeoutMs":7})");
  EXPECT_EQ(file.configuration.pipe, L"a");
  EXPECT_EQ(file.configuration.program, L"%HOME%\\b.exe");
  EXPECT_EQ(file.configuration.start_timeout, std::chrono::milliseconds(7));
  EXPECT_TRUE(file.faults.empty());
}

TEST(ClientMembers, ThatAreWrongHaveOneFaultEachAndTheDefault) {
  const ClientFile file = Read(LR"({"pipe":1,"client":null,"startTimeoutMs":-1,"other":2})");
  EXPECT_EQ(file.configuration.pipe, L"");
  EXPECT_EQ(file.configuration.start_timeout, std::chrono::milliseconds(15'000));
  EXPECT_EQ(file.faults,
            (std::vector<std::wstring>{L"\"pipe\" is not a string", L"\"client\" is not a string",
                                       L"\"startTimeoutMs\" is not a whole number of milliseconds",
                                       L"\"other\" is not known"}));
}

TEST(ClientMembers, ThatResembleKnownOnesAreSlips) {
  CJsonObject file;
  ASSERT_TRUE(file.CreateFrom(LR"({"Pipe":"a","startTimeout":5,"startTimeoutMS":5,"other":2})"));
  EXPECT_EQ(FindClientSlips(file),
            (std::vector<std::wstring>{L"\"Pipe\" is not known; \"pipe\" is",
                                       L"\"startTimeout\" is not known; \"startTimeoutMs\" is",
                                       L"\"startTimeoutMS\" is not known; \"startTimeoutMs\" is"}));
}

}  // namespace
