// Commands that only open a panel of the PLM client, and commands before a connection or a login.
#include <gtest/gtest.h>

#include "add_in_fixture.h"

namespace {

/// A panel command; its request is the answer to the login, or empty.
struct Panel {
  const wchar_t* callback;
  const char* command;
  bool sends_login;
};

constexpr Panel kPanels[] = {{L"PlmWf", "QD_PLMStartWF", true},
                             {L"PlmCode", "QD_PLMGetcode", true},
                             {L"PlmMyTempMaterial", "QD_PLMMyTempMaterial", false}};

class PanelCommand : public AddInFixture, public testing::WithParamInterface<Panel> {};

TEST_P(PanelCommand, SendsItsRequestAndNothingElse) {
  ConnectAndLogIn();
  EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  const std::string request = GetParam().sends_login ? kLoginAnswer : "";
  EXPECT_EQ(Asked(), Requests{GetParam().command + (" " + request)});
  EXPECT_EQ(HostCalls(), Texts{});
}

TEST_P(PanelCommand, SucceedsWhateverTheAnswer) {
  ConnectAndLogIn();
  for (const char* answer :
       {"", "{}", R"({"__InvokeResult__":false})", "{", R"({"OpenFile":["C:\\a.sldprt"]})"}) {
    Answer(GetParam().command, answer);
    EXPECT_EQ(Pick(GetParam().callback).result, S_OK) << answer;
  }
  EXPECT_EQ(AddInLog(), Texts{});
  EXPECT_EQ(PlatformLog().size(), 1u) << "the answer that is not JSON";
  EXPECT_EQ(HostCalls(), Texts{});
}

TEST_P(PanelCommand, SucceedsWithoutAClientAndLogsOneLine) {
  ConnectAndLogIn();
  StopClient();
  m_boxes->Expect(IDOK);
  EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  EXPECT_EQ(AddInLog(), Texts{});
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(Utf8(PlatformLog()[0]).find(GetParam().command), std::string::npos) << Utf8(PlatformLog()[0]);
}

INSTANTIATE_TEST_SUITE_P(, PanelCommand, testing::ValuesIn(kPanels),
                         [](const auto& test) { return Utf8(test.param.callback); });

class Command : public AddInFixture {};

TEST_F(Command, ReturnsInvalidPointerBeforeAConnection) {
  ISolidWorksAddInPtr object;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
  for (const DirectCommand& command : kAllCommands) ExpectEndedException(object, command, E_POINTER);
  EXPECT_EQ(Asked(), Requests{});
  EXPECT_EQ(AddInLog(), Texts{});
}

TEST_F(Command, ReturnsInvalidPointerWhileLoggedOutIfItSendsTheLogin) {
  Connect();
  m_host->Open(MakeModel(L"a.sldprt"));
  for (const DirectCommand& command : kCommandsWithLogin) ExpectEndedException(Object(), command, E_POINTER);
  EXPECT_EQ(Asked(), Requests{});
  EXPECT_EQ(AddInLog(), Texts{});
}

TEST_F(Command, ReturnsInvalidPointerAfterALogoutIfItSendsTheLogin) {
  ConnectAndLogIn();
  m_host->Open(MakeModel(L"a.sldprt"));
  EXPECT_EQ(Pick(L"PlmLogOut").result, S_OK);
  for (const DirectCommand& command : kCommandsWithLogin) ExpectEndedException(Object(), command, E_POINTER);
  EXPECT_EQ(Asked(), Requests{"QD_PLMLogout "});
  EXPECT_EQ(AddInLog(), Texts{});
}

TEST_F(Command, SendsTheLoginAsCompactTextHoweverTheClientWroteIt) {
  Answer("QD_PLMLogin",
         " { \"__InvokeResult__\" : true , \"path\" : \"a\\/b\",\r\n\t\"user\" : \"\\u738b\\u00e9\" , "
         "\"ids\" : [ 1 , null ] } ");
  Connect();
  m_host->Open(MakeModel(L"a.sldprt"));
  const ISolidWorksAddInPtr object = Object();
  ASSERT_EQ(object->PlmLogin(), S_OK);
  for (const DirectCommand& command : kCommandsWithLogin) {
    EXPECT_EQ((object.GetInterfacePtr()->*command.method)(), S_OK);
    const std::string request = Asked().back();
    EXPECT_EQ(request.substr(request.find(' ')),
              R"( {"__InvokeResult__":true,"path":"a/b","user":"王é","ids":[1,null]})")
        << Utf8(command.name);
  }
  EXPECT_EQ(Asked().size(), 1 + std::size(kCommandsWithLogin));
}

TEST_F(Command, SucceedsWhileLoggedOutIfItSendsNoLogin) {
  Connect();
  EXPECT_EQ(Object()->PlmMyTempMaterial(), S_OK);
  EXPECT_EQ(PlatformLog(), Texts{});
}

TEST_F(Command, ReturnsAnExceptionToTheHostAsAnAutomationErrorAndLogsIt) {
  Connect();
  const ISolidWorksAddInPtr object = Object();
  wchar_t name[] = L"PlmWf";
  LPOLESTR names[] = {name};
  DISPID id = 0;
  ASSERT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id), S_OK);
  DISPPARAMS none{};
  EXCEPINFO exception{};
  EXPECT_EQ(
      object->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, &exception, nullptr),
      DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, E_POINTER);
  EXPECT_GT(SysStringLen(exception.bstrDescription), 0u);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(PlatformLog()[0].find(L"PlmWf"), std::wstring::npos);
}

}  // namespace
