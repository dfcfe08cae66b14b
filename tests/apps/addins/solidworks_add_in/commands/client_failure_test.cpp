// What the add-in makes of a PLM client that is not there, dies, or answers nonsense: the host lives, the
// user's state is kept, and one line of the log names the command.
#include <gtest/gtest.h>

#include "add_in_fixture.h"

namespace {

using plm_client::Reply;

class ClientFailure : public AddInTest {
 protected:
  /// One line under "platform" that names the command.
  void ExpectPlatformLine(const char* command) const {
    const auto lines = PlatformLog();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(Utf8(lines[0]).find(command), std::string::npos) << Utf8(lines[0]);
  }
};

TEST_F(ClientFailure, LoginWithoutAClientFailsAsWithoutAnAnswer) {
  StopClient();
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
  ExpectPlatformLine("QD_PLMLogin");
  EXPECT_EQ(AddInLog(),
            std::vector<std::wstring>{
                L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|pResult is empty<hr=0xa3013005>"});
}

TEST_F(ClientFailure, ClientThatDiesBeforeItAnswersGivesNoAnswer) {
  m_script.Always("QD_PLMLogin", Reply::Nothing().ThenDisconnect());
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
  ExpectPlatformLine("QD_PLMLogin");
}

TEST_F(ClientFailure, ClientThatDiesInTheMiddleOfItsAnswerGivesNoAnswer) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMQuery", Reply::Bytes("Content-Length: 1000\r\n\r\n{\"jsonrpc\":").ThenDisconnect());
  EXPECT_EQ(Pick(L"PlmQuery").result, S_OK);
  ExpectPlatformLine("QD_PLMQuery");
  EXPECT_EQ(HostCalls(), std::vector<std::wstring>{});
}

TEST_F(ClientFailure, NextCommandStartsOnAFreshConnection) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMQuery", Reply::Error(-32000, "the server is down"));
  Pick(L"PlmQuery");
  ExpectPlatformLine("QD_PLMQuery");
  EXPECT_EQ(Pick(L"PlmWf").result, S_OK);
  EXPECT_EQ(m_client->Requests().back().command, "QD_PLMStartWF");
  EXPECT_EQ(m_client->ConnectionCount(), 2);
}

TEST_F(ClientFailure, UserLogsOutLocallyOnlyWhereTheClientAgrees) {
  ConnectAndLogIn();
  StopClient();
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectPlatformLine("QD_PLMLogout");
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 1);
}

TEST_F(ClientFailure, HostDisconnectsAlsoWhereTheClientIsGone) {
  ConnectAndLogIn();
  StopClient();
  EXPECT_TRUE(Disconnect());
  ExpectPlatformLine("QD_PLMLogout");
}

TEST_F(ClientFailure, DeeplyNestedAnswerIsNoAnswerToALogin) {
  const std::string deep =
      R"({"__InvokeResult__":true,"data":)" + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}";
  Answer("QD_PLMLogin", deep);
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), E_FAIL);
  EXPECT_EQ(Enabled(L"EnablePlmLogin"), 1);
}

TEST_F(ClientFailure, AnswerOfSixtyMebibytesIsReadAndSentBackWhole) {
  const std::string large = R"({"__InvokeResult__":true,"data":")" + std::string(60u << 20, 'x') + R"("})";
  Answer("QD_PLMLogin", large);
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), S_OK);
  EXPECT_EQ(Object()->PlmWf(), S_OK);
  EXPECT_EQ(m_client->Requests().back().text, large);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

TEST_F(ClientFailure, AnswerOverSixtyFourMebibytesIsNoAnswer) {
  Answer("QD_PLMLogin", R"({"__InvokeResult__":true,"data":")" + std::string(64u << 20, 'x') + R"("})");
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
  ExpectPlatformLine("QD_PLMLogin");
}

TEST_F(ClientFailure, MalformedConfigurationMeansTheDefaultsAndOneLine) {
  m_home.WriteConfiguration(L"PlmClient.json", "{\"pipe\":");
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
  const auto lines = PlatformLog();
  ASSERT_FALSE(lines.empty());
  EXPECT_NE(lines[0].find(m_home.ConfigurationPath(L"PlmClient.json")), std::wstring::npos) << Utf8(lines[0]);
}

}  // namespace
