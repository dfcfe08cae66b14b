// A PLM client that is missing, dies or sends an invalid answer: the host keeps running, the user stays
// logged in or out, and one log line names the command.
#include <gtest/gtest.h>

#include <chrono>

#include "add_in_fixture.h"
#include "case_name.h"
#include "log_line.h"
#include "module/user_language.h"
#include "result_codes.h"

namespace {

using plm_client::Reply;

class ClientFailure : public AddInFixture {
 protected:
  /// The box for a client that cannot be reached will come up.
  void ExpectBox() { m_boxes->Expect(IDOK); }

  /// The platform logged one line, which names the command.
  void ExpectPlatformLine(const char* command) const {
    const auto lines = PlatformLog();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(Utf8(lines[0]).find(command), std::string::npos) << Utf8(lines[0]);
  }
};

TEST_F(ClientFailure, LoginFailsWithoutAClient) {
  StopClient();
  ExpectBox();
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

TEST_F(ClientFailure, IsLoggedInTheClientsWordsAsTheyStand) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMQuery", Reply::Error(-32000, "%s%n%d %m{1} ${TMP}"));
  Pick(L"PlmQuery");
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(PlatformLog()[0].find(L"-32000: %s%n%d %m{1} ${TMP}"), std::wstring::npos)
      << Utf8(PlatformLog()[0]);
}

TEST_F(ClientFailure, LeavesNothingOfALoginsAnswerInTheLog) {
  Connect();
  for (const char* const answer :
       {R"({"__InvokeResult__":true,"token":"secret"})", R"({"__InvokeResult__":"secret"})",
        R"({"__InvokeResult__":false,"message":"secret"})", R"({"token":"secret")"}) {
    Answer("QD_PLMLogin", answer);
    Object()->PlmLogin();
  }
  for (const std::wstring& line : m_home.LogLines()) {
    EXPECT_EQ(line.find(L"secret"), std::wstring::npos) << Utf8(line);
  }
  EXPECT_FALSE(PlatformLog().empty()) << "the last answer is no JSON object, and is logged as that";
}

TEST_F(ClientFailure, UserStaysLoggedInIfTheLogoutFails) {
  ConnectAndLogIn();
  StopClient();
  ExpectBox();
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectPlatformLine("QD_PLMLogout");
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 1);
}

/// The texts of the box in a language of the user.
struct BoxTexts {
  const char* name;
  LANGID language;
  const wchar_t* first_line;
  const wchar_t* log_folder;
  const wchar_t* caption;
};

class ClientFailureBox : public ClientFailure, public testing::WithParamInterface<BoxTexts> {};

TEST_P(ClientFailureBox, SaysInTheUsersLanguageThatTheClientDidNotAnswer) {
  const UserLanguage language(GetParam().language);
  StopClient();
  Connect();
  ExpectBox();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  ASSERT_EQ(m_boxes->Boxes().size(), 1u);
  const RecordedMessageBox& box = m_boxes->Boxes()[0];
  EXPECT_TRUE(box.text.starts_with(GetParam().first_line + std::wstring(L"\n\nthere is no pipe ")))
      << Utf8(box.text);
  EXPECT_TRUE(box.text.ends_with(GetParam().log_folder + (L" " + m_home.Folder().Path(L"log"))))
      << Utf8(box.text);
  EXPECT_EQ(box.caption, GetParam().caption);
  EXPECT_EQ(box.icon, static_cast<UINT>(MB_ICONWARNING));
}

INSTANTIATE_TEST_SUITE_P(, ClientFailureBox,
                         testing::Values(BoxTexts{"English", 0x0409, L"The PLM client did not answer.",
                                                  L"\nLog folder:", L"Collaborative management"},
                                         BoxTexts{"SimplifiedChinese", 0x0804, L"PLM 客户端没有应答。",
                                                  L"\n日志文件夹:", L"协同管理"},
                                         BoxTexts{"TraditionalChinese", 0x0404, L"PLM 用戶端沒有回應。",
                                                  L"\n日誌資料夾:", L"協同管理"}),
                         CaseName<BoxTexts>);

TEST_F(ClientFailure, LogoutNeverStartsTheClientsProgram) {
  ConnectAndLogIn();
  StopClient();
  m_home.WriteConfiguration(L"PlmClient.json",
                            R"({"pipe":"tavo-no-such-pipe","client":"C:\\no such program.exe"})");
  ExpectBox();
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  EXPECT_TRUE(Disconnect());
  const auto lines = PlatformLog();
  ASSERT_EQ(lines.size(), 2u) << "one of the user's logout, one of the disconnect's";
  for (const std::wstring& line : lines) {
    EXPECT_NE(line.find(L"this command does not start the client program"), std::wstring::npos) << Utf8(line);
  }
}

TEST_F(ClientFailure, AddInDisconnectsFromTheHostAfterTenSecondsIfTheClientDoesNotAnswer) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMLogout", Reply::Nothing());
  const ULONGLONG start = GetTickCount64();
  EXPECT_TRUE(Disconnect());
  EXPECT_GE(GetTickCount64() - start, 9'900u);
  EXPECT_LT(GetTickCount64() - start, 12'000u);
  ExpectPlatformLine("QD_PLMLogout");
}

TEST_F(ClientFailure, LogoutOfTheUserWaitsLongerThanTenSeconds) {
  ConnectAndLogIn();
  m_script.Always("QD_PLMLogout",
                  Reply::Text(R"({"__InvokeResult__":true})").After(std::chrono::seconds(11)));
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 0);
  EXPECT_EQ(m_home.LogLines(), Texts{});
}

/// An answer that is not a JSON object, and what the log says about it.
struct UnusableAnswer {
  const char* name;
  const char* text;
  const wchar_t* end_of_line;
};

class AnswerThatIsNotAJsonObject : public ClientFailure,
                                   public testing::WithParamInterface<UnusableAnswer> {};

TEST_P(AnswerThatIsNotAJsonObject, IsLoggedWithItsFaultButNotItsText) {
  ConnectAndLogIn();
  Answer("QD_PLMQuery", GetParam().text);
  EXPECT_EQ(Pick(L"PlmQuery").result, S_OK);
  ASSERT_EQ(PlatformLog().size(), 1u);
  const std::wstring line = PlatformLog()[0];
  EXPECT_NE(line.find(L"the answer to PLM command [QD_PLMQuery] is not a JSON object: "), std::wstring::npos)
      << Utf8(line);
  EXPECT_TRUE(line.ends_with(GetParam().end_of_line)) << Utf8(line);
  EXPECT_EQ(line.find(L"secret"), std::wstring::npos) << Utf8(line);
}

INSTANTIATE_TEST_SUITE_P(
    , AnswerThatIsNotAJsonObject,
    testing::Values(UnusableAnswer{"Cut", R"({"user":"secret")", L" (line 1, column 17)"},
                    UnusableAnswer{"NotJson", "secret", L" (line 1, column 1)"},
                    UnusableAnswer{"AfterOtherCharacters", R"({"ü":secret})", L" (line 1, column 6)"},
                    UnusableAnswer{"OnALaterLine", "{\r\n  \"ü\": secret\r\n}", L" (line 2, column 8)"},
                    UnusableAnswer{"TextBehind", R"({} secret)", L" (line 1, column 4)"},
                    UnusableAnswer{"Blank", " ", L" (line 1, column 2)"},
                    UnusableAnswer{"Array", R"(["secret"])", L"it is another JSON value (line 1, column 1)"},
                    UnusableAnswer{"String", "\n \"secret\"",
                                   L"it is another JSON value (line 2, column 2)"}),
    CaseName<UnusableAnswer>);

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
  ExpectBox();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  const auto lines = PlatformLog();
  ASSERT_FALSE(lines.empty());
  EXPECT_NE(lines[0].find(m_home.ConfigurationPath(L"PlmClient.json")), std::wstring::npos) << Utf8(lines[0]);
}

}  // namespace
