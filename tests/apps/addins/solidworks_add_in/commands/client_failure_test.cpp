// A PLM client that is missing, dies or sends an invalid answer: the host keeps running, the user stays
// logged in or out, and one log line names the command.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "log_line.h"
#include "result_codes.h"

namespace {

using plm_client::Reply;

class ClientFailure : public AddInFixture {
 protected:
  /// The platform logged one line, which names the command.
  void ExpectPlatformLine(const char* command) const {
    const auto lines = PlatformLog();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(Utf8(lines[0]).find(command), std::string::npos) << Utf8(lines[0]);
  }
};

TEST_F(ClientFailure, LoginFailsWithoutAClient) {
  StopClient();
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  ExpectPlatformLine("QD_PLMLogin");
  EXPECT_EQ(AddInLog(), Texts{ErrorLine(368, L"PlmLogin", L"pResult is empty", hr::kNoAnswer)});
}

TEST_F(ClientFailure, LoginFailsIfTheClientDiesBeforeItAnswers) {
  m_script.Always("QD_PLMLogin", Reply::Nothing().ThenDisconnect());
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  ExpectPlatformLine("QD_PLMLogin");
}

TEST_F(ClientFailure, PartOfAnAnswerCountsAsNoAnswer) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMQuery", Reply::Bytes("Content-Length: 1000\r\n\r\n{\"jsonrpc\":").ThenDisconnect());
  EXPECT_EQ(Pick(L"PlmQuery").result, S_OK);
  ExpectPlatformLine("QD_PLMQuery");
  EXPECT_EQ(HostCalls(), Texts{});
}

TEST_F(ClientFailure, NextCommandUsesANewConnection) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMQuery", Reply::Error(-32000, "the server is down"));
  Pick(L"PlmQuery");
  ExpectPlatformLine("QD_PLMQuery");
  EXPECT_EQ(Pick(L"PlmWf").result, S_OK);
  EXPECT_EQ(m_client->Requests().back().command, "QD_PLMStartWF");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_F(ClientFailure, UserStaysLoggedInIfTheLogoutFails) {
  ConnectAndLogIn();
  StopClient();
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectPlatformLine("QD_PLMLogout");
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 1);
}

TEST_F(ClientFailure, AddInDisconnectsFromTheHostWithoutAClient) {
  ConnectAndLogIn();
  StopClient();
  EXPECT_TRUE(Disconnect());
  ExpectPlatformLine("QD_PLMLogout");
}

TEST_F(ClientFailure, LoginFailsIfTheAnswerIsNestedTooDeep) {
  const std::string deep =
      R"({"__InvokeResult__":true,"data":)" + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}";
  Answer("QD_PLMLogin", deep);
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), E_FAIL);
  EXPECT_EQ(Enabled(L"EnablePlmLogin"), 1);
}

TEST_F(ClientFailure, AnswerOfSixtyMebibytesIsReadAndSentBackCompletely) {
  const std::string large = R"({"__InvokeResult__":true,"data":")" + std::string(60u << 20, 'x') + R"("})";
  Answer("QD_PLMLogin", large);
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), S_OK);
  EXPECT_EQ(Object()->PlmWf(), S_OK);
  EXPECT_EQ(m_client->Requests().back().text, large);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

TEST_F(ClientFailure, LoginFailsIfTheAnswerIsOverSixtyFourMebibytes) {
  Answer("QD_PLMLogin", R"({"__InvokeResult__":true,"data":")" + std::string(64u << 20, 'x') + R"("})");
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  ExpectPlatformLine("QD_PLMLogin");
}

TEST_F(ClientFailure, MalformedConfigurationIsLoggedAndTheDefaultsAreUsed) {
  m_home.WriteConfiguration(L"PlmClient.json", "{\"pipe\":");
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  const auto lines = PlatformLog();
  ASSERT_FALSE(lines.empty());
  EXPECT_NE(lines[0].find(m_home.ConfigurationPath(L"PlmClient.json")), std::wstring::npos) << Utf8(lines[0]);
}

}  // namespace
