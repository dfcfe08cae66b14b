// Commands that only open a panel of the PLM client, and commands before a connection or a login.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "raised_by.h"

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
  EXPECT_EQ(m_home.LogLines(), Texts{});
  EXPECT_EQ(HostCalls(), Texts{});
}

TEST_P(PanelCommand, SucceedsWithoutAClientAndLogsOneLine) {
  ConnectAndLogIn();
  StopClient();
  EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  EXPECT_EQ(AddInLog(), Texts{});
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(Utf8(PlatformLog()[0]).find(GetParam().command), std::string::npos) << Utf8(PlatformLog()[0]);
}

TEST_P(PanelCommand, ThrowsInvalidPointerWhileLoggedOutIfItSendsTheLogin) {
  Connect();
  const auto call = [&] {
    const ISolidWorksAddInPtr object = Object();
    if (GetParam().callback == std::wstring(L"PlmWf")) return object->PlmWf();
    if (GetParam().callback == std::wstring(L"PlmCode")) return object->PlmCode();
    return object->PlmMyTempMaterial();
  };
  if (!GetParam().sends_login) {
    EXPECT_EQ(call(), S_OK);
    return;
  }
  EXPECT_EQ(RaisedBy(call), E_POINTER);
  EXPECT_EQ(Asked(), Requests{});
}

INSTANTIATE_TEST_SUITE_P(, PanelCommand, testing::ValuesIn(kPanels),
                         [](const auto& test) { return Utf8(test.param.callback); });

class Command : public AddInFixture {};

TEST_F(Command, ThrowsInvalidPointerBeforeAConnection) {
  ISolidWorksAddInPtr object;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
  EXPECT_EQ(RaisedBy([&] { object->PlmLogin(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmLogOut(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->OpenDataSelector(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmMyCheckOutList(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmWf(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmCode(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmQuery(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmImportCurrent(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmLotimport(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmCreateMaterial(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmMyTempMaterial(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmTaskManage(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmMaterialBackFill(); }), E_POINTER);
  EXPECT_EQ(RaisedBy([&] { object->PlmImportChangeItem(); }), E_POINTER);
  EXPECT_EQ(Asked(), Requests{});
}

TEST_F(Command, ThrowsInvalidPointerWhileLoggedOutIfItSendsTheLogin) {
  Connect();
  m_host->Open(MakeModel(L"a.sldprt"));
  for (const auto command : {&ISolidWorksAddIn::OpenDataSelector, &ISolidWorksAddIn::PlmQuery,
                             &ISolidWorksAddIn::PlmTaskManage, &ISolidWorksAddIn::PlmMaterialBackFill}) {
    EXPECT_EQ(RaisedBy([&] { (Object().GetInterfacePtr()->*command)(); }), E_POINTER);
  }
  EXPECT_EQ(Asked(), Requests{});
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
