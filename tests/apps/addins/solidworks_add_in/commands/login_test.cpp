// Login, logout, and the items that they enable.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "case_name.h"
#include "log_line.h"
#include "module/string_table.h"
#include "result_codes.h"

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

class Login : public AddInFixture {
 protected:
  Login() { m_boxes.emplace(); }

  void ExpectLoggedIn(bool logged_in) const {
    EXPECT_EQ(Enabled(L"EnablePlmLogin"), logged_in ? 0 : 1);
    for (const wchar_t* method : kEnabledWhileLoggedIn) {
      EXPECT_EQ(Enabled(method), logged_in ? 1 : 0) << Utf8(method);
    }
  }
};

TEST_F(Login, DisablesItselfAndEnablesAllOtherCommands) {
  Connect();
  ExpectLoggedIn(false);
  EXPECT_EQ(Pick(L"PlmLogin").result, S_OK);
  ExpectLoggedIn(true);
  EXPECT_EQ(Asked(), Requests{"QD_PLMLogin "});
  EXPECT_EQ(AddInLog(), Texts{});
}

/// A host without the quirk calls the enable methods without an argument.
TEST_F(Login, DisablesItselfAlsoWhereOnlyTheResultOfAnEnableMethodCounts) {
  m_host->GetQuirks().Set(cad_host::Quirk::kEnableArgument, false);
  Connect();
  EXPECT_EQ(Pick(L"PlmLogin").result, S_OK);
  EXPECT_FALSE(m_host->IsEnabled(*m_addIn, L"PlmLogin"));
  EXPECT_TRUE(m_host->IsEnabled(*m_addIn, L"PlmLogOut"));
}

TEST_F(Login, EndsWithALogout) {
  ConnectAndLogIn();
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectLoggedIn(false);
  EXPECT_EQ(Asked(), Requests{"QD_PLMLogout "});
}

TEST_F(Login, FailsWithThePlatformCodeIfThereIsNoAnswer) {
  Answer("QD_PLMLogin", "");
  Connect();
  const auto picked = Pick(L"PlmLogin");
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, hr::kNoAnswer);
  ExpectLoggedIn(false);
  EXPECT_EQ(AddInLog(), Texts{ErrorLine(368, L"PlmLogin", L"pResult is empty", hr::kNoAnswer)});
}

TEST_F(Login, ReturnsThePlatformCodeFromTheMethodItself) {
  Answer("QD_PLMLogin", "");
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
}

/// An answer that means a failure.
struct FailureAnswer {
  const char* name;
  const char* text;
};

class FailedLogin : public Login, public testing::WithParamInterface<FailureAnswer> {};

TEST_P(FailedLogin, IsLoggedAndChangesNothing) {
  Answer("QD_PLMLogin", GetParam().text);
  Connect();
  EXPECT_EQ(Object()->PlmLogin(), E_FAIL);
  ExpectLoggedIn(false);
  EXPECT_EQ(AddInLog(),
            Texts{ErrorLine(374, L"PlmLogin", L"m_invok->Invoke command [QD_PLMLogin] failed", E_FAIL)});
}

INSTANTIATE_TEST_SUITE_P(, FailedLogin,
                         testing::Values(FailureAnswer{"EmptyObject", "{}"},
                                         FailureAnswer{"False", R"({"__InvokeResult__":false})"},
                                         FailureAnswer{"Number", R"({"__InvokeResult__":1})"},
                                         FailureAnswer{"Text", R"({"__InvokeResult__":"true"})"},
                                         FailureAnswer{"OtherCase", R"({"__invokeresult__":true})"},
                                         FailureAnswer{"Nested", R"({"data":{"__InvokeResult__":true}})"},
                                         FailureAnswer{"Array", "[true]"}, FailureAnswer{"OnlyTrue", "true"},
                                         FailureAnswer{"OnlyNull", "null"}, FailureAnswer{"OpenBrace", "{"},
                                         FailureAnswer{"Truncated", R"({"__InvokeResult__":true)"},
                                         FailureAnswer{"NotJson", "no JSON at all"},
                                         FailureAnswer{"Blank", " "}),
                         CaseName<FailureAnswer>);

TEST_F(Login, ThatFailsLeavesTheUserLoggedIn) {
  ConnectAndLogIn();
  Answer("QD_PLMLogin", R"({"__InvokeResult__":false})");
  EXPECT_EQ(Object()->PlmLogin(), E_FAIL);
  Answer("QD_PLMLogin", "");
  EXPECT_EQ(Object()->PlmLogin(), hr::kNoAnswer);
  ExpectLoggedIn(true);
  EXPECT_EQ(Pick(L"PlmWf").result, S_OK);
  EXPECT_EQ(Asked().back(), std::string("QD_PLMStartWF ") + kLoginAnswer);
}

TEST_F(Login, RepeatedReplacesTheStoredResult) {
  ConnectAndLogIn();
  Answer("QD_PLMLogin", R"({"__InvokeResult__":true,"user":"second"})");
  EXPECT_EQ(Object()->PlmLogin(), S_OK);
  ExpectLoggedIn(true);
  Pick(L"PlmCode");
  EXPECT_EQ(Asked().back(), R"(QD_PLMGetcode {"__InvokeResult__":true,"user":"second"})");
}

class FailedLogout : public Login, public testing::WithParamInterface<FailureAnswer> {};

TEST_P(FailedLogout, ReturnsSuccessLogsNothingAndLeavesTheUserLoggedIn) {
  ConnectAndLogIn();
  Answer("QD_PLMLogout", GetParam().text);
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  ExpectLoggedIn(true);
  EXPECT_EQ(AddInLog(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(, FailedLogout,
                         testing::Values(FailureAnswer{"Empty", ""}, FailureAnswer{"EmptyObject", "{}"},
                                         FailureAnswer{"False", R"({"__InvokeResult__":false})"},
                                         FailureAnswer{"OpenBrace", "{"}, FailureAnswer{"Array", "[]"}),
                         CaseName<FailureAnswer>);

TEST_F(Login, IsNotNeededForALogout) {
  Connect();
  EXPECT_EQ(Object()->PlmLogOut(), S_OK);
  ExpectLoggedIn(false);
}

TEST_F(Login, EnableMethodFailsForANullPointer) {
  Connect();
  EXPECT_EQ(Object()->EnablePlmLogin(nullptr), E_POINTER);
}

}  // namespace
