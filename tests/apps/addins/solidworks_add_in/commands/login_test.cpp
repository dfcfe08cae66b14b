// Login, logout, and which items they enable.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "module/string_table.h"

namespace {

constexpr const wchar_t* kEnabledWhileLoggedIn[] = {L"EnablePlmLogOut",
                                                    L"EnableOpenDataSelector",
                                                    L"EnablePlmMyCheckOutList",
                                                    L"EnablePlmWf",
                                                    L"EnablePlmCode",
                                                    L"EnablePlmQuery",
                                                    L"EnableImportCurrent",
                                                    L"EnableLotimport",
                                                    L"EnablePlmCreateMaterial",
                                                    L"EnablePlmMyTempMaterial",
                                                    L"EnablePlmTaskManage",
                                                    L"EnablePlmMaterialBackFill",
                                                    L"EnablePlmImportChangeItem"};

class Login : public AddInTest {
 protected:
  Login() { m_boxes.emplace(); }

  void ExpectLoggedIn(bool logged_in) const {
    EXPECT_EQ(Enabled(L"EnablePlmLogin"), logged_in ? 0 : 1);
    for (const wchar_t* method : kEnabledWhileLoggedIn) {
      EXPECT_EQ(Enabled(method), logged_in ? 1 : 0) << Utf8(method);
    }
  }
};

TEST_F(Login, EnablesEverythingButItself) {
  Connect();
  ExpectLoggedIn(false);
  EXPECT_EQ(Pick(L"PlmLogin").result, S_OK);
  ExpectLoggedIn(true);
  EXPECT_EQ(Asked(), std::vector<std::string>{"QD_PLMLogin "});
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{});
}

TEST_F(Login, IsUndoneByLogout) {
  ConnectAndLogIn();
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectLoggedIn(false);
  EXPECT_EQ(Asked(), std::vector<std::string>{"QD_PLMLogout "});
}

TEST_F(Login, WithoutAnAnswerFailsWithThePlatformsCodeAndChangesNothing) {
  Answer("QD_PLMLogin", "");
  Connect();
  const auto picked = Pick(L"PlmLogin");
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, static_cast<HRESULT>(0xA3013005));
  ExpectLoggedIn(false);
  EXPECT_EQ(AddInLog(),
            std::vector<std::wstring>{
                L"errormsg|ERROR|368|CSolidWorksAddIn::PlmLogin|pResult is empty<hr=0xa3013005>"});
}

TEST_F(Login, WithoutAnAnswerReturnsThePlatformsCodeFromTheMethodItself) {
  Answer("QD_PLMLogin", "");
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
}

/// Answers that do not tell success.
class FailedLogin : public Login, public testing::WithParamInterface<const char*> {};

TEST_P(FailedLogin, IsLoggedAndChangesNothing) {
  Answer("QD_PLMLogin", GetParam());
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), E_FAIL);
  ExpectLoggedIn(false);
  EXPECT_EQ(AddInLog(),
            std::vector<std::wstring>{L"errormsg|ERROR|374|CSolidWorksAddIn::PlmLogin|m_invok->Invoke "
                                      L"command [QD_PLMLogin] failed<hr=0x80004005>"});
}

INSTANTIATE_TEST_SUITE_P(, FailedLogin,
                         testing::Values("{}", R"({"__InvokeResult__":false})", R"({"__InvokeResult__":1})",
                                         R"({"__InvokeResult__":"true"})", R"({"__invokeresult__":true})",
                                         R"({"data":{"__InvokeResult__":true}})", "[true]", "true", "null",
                                         "{", R"({"__InvokeResult__":true)", "no JSON at all", " "));

TEST_F(Login, ThatFailsKeepsWhoIsLoggedInLoggedIn) {
  ConnectAndLogIn();
  Answer("QD_PLMLogin", R"({"__InvokeResult__":false})");
  EXPECT_EQ(Object()->PlmLogin(), E_FAIL);
  Answer("QD_PLMLogin", "");
  EXPECT_EQ(Object()->PlmLogin(), static_cast<HRESULT>(0xA3013005));
  ExpectLoggedIn(true);
  EXPECT_EQ(Pick(L"PlmWf").result, S_OK);
  EXPECT_EQ(Asked().back(), std::string("QD_PLMStartWF ") + kLoginAnswer);
}

TEST_F(Login, MadeAgainReplacesTheStoredResult) {
  ConnectAndLogIn();
  Answer("QD_PLMLogin", R"({"__InvokeResult__":true,"user":"second"})");
  EXPECT_EQ(Object()->PlmLogin(), S_OK);
  ExpectLoggedIn(true);
  Pick(L"PlmCode");
  EXPECT_EQ(Asked().back(), R"(QD_PLMGetcode {"__InvokeResult__":true,"user":"second"})");
}

/// Logout answers that do not tell success.
class FailedLogout : public Login, public testing::WithParamInterface<const char*> {};

TEST_P(FailedLogout, ReturnsSuccessLogsNothingAndLeavesTheUserLoggedIn) {
  ConnectAndLogIn();
  Answer("QD_PLMLogout", GetParam());
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectLoggedIn(true);
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
}

INSTANTIATE_TEST_SUITE_P(, FailedLogout,
                         testing::Values("", "{}", R"({"__InvokeResult__":false})", "{", "[]"));

TEST_F(Login, MayBeUndoneWithoutHavingBeenMade) {
  Connect();
  EXPECT_EQ(Object()->PlmLogOut(), S_OK);
  ExpectLoggedIn(false);
}

TEST_F(Login, EnablementRefusesANullPointer) {
  Connect();
  EXPECT_EQ(Object()->EnablePlmLogin(nullptr), E_POINTER);
}

}  // namespace
