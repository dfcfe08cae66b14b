// Commands that only open a panel of the PLM client, and what every command does without a client.
#include <gtest/gtest.h>

#include "add_in_fixture.h"

namespace {

/// A panel command: its request is the login's text or nothing.
struct Panel {
  const wchar_t* callback;
  const char* command;
  bool sends_login;
};

constexpr Panel kPanels[] = {{L"PlmWf", "QD_PLMStartWF", true},
                             {L"PlmCode", "QD_PLMGetcode", true},
                             {L"PlmMyTempMaterial", "QD_PLMMyTempMaterial", false}};

class PanelCommand : public AddInTest, public testing::WithParamInterface<Panel> {};

TEST_P(PanelCommand, SendsItsRequestAndNothingElse) {
  ConnectAndLogIn();
  EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  const std::string request = GetParam().sends_login ? kLoginAnswer : "";
  EXPECT_EQ(Asked(), std::vector<std::string>{GetParam().command + (" " + request)});
  EXPECT_EQ(HostCalls(), std::vector<std::wstring>{});
}

TEST_P(PanelCommand, SucceedsWhateverTheAnswer) {
  ConnectAndLogIn();
  for (const char* answer :
       {"", "{}", R"({"__InvokeResult__":false})", "{", R"({"OpenFile":["C:\\a.sldprt"]})"}) {
    Answer(GetParam().command, answer);
    EXPECT_EQ(Pick(GetParam().callback).result, S_OK) << answer;
  }
  EXPECT_EQ(m_home.LogLines(), std::vector<std::wstring>{});
  EXPECT_EQ(HostCalls(), std::vector<std::wstring>{});
}

TEST_P(PanelCommand, SucceedsWithoutAClientAndIsToldInOneLine) {
  ConnectAndLogIn();
  StopClient();
  EXPECT_EQ(Pick(GetParam().callback).result, S_OK);
  EXPECT_EQ(AddInLog(), std::vector<std::wstring>{});
  ASSERT_EQ(PlatformLog().size(), 1u);
  EXPECT_NE(Utf8(PlatformLog()[0]).find(GetParam().command), std::string::npos) << Utf8(PlatformLog()[0]);
}

TEST_P(PanelCommand, RaisesAnInvalidPointerWhileLoggedOutIfItSendsTheLogin) {
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
  try {
    call();
    FAIL() << "no exception";
  } catch (const _com_error& error) {
    EXPECT_EQ(error.Error(), E_POINTER);
  }
  EXPECT_EQ(Asked(), std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(, PanelCommand, testing::ValuesIn(kPanels),
                         [](const auto& test) { return Utf8(test.param.callback); });

class Command : public AddInTest {};

TEST_F(Command, BeforeAConnectionRaisesAnInvalidPointer) {
  ISolidWorksAddInPtr object;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
  const auto expect_raised = [](const auto& call) {
    try {
      call();
      ADD_FAILURE() << "no exception";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Error(), E_POINTER);
    }
  };
  expect_raised([&] { object->PlmLogin(); });
  expect_raised([&] { object->PlmLogOut(); });
  expect_raised([&] { object->OpenDataSelector(); });
  expect_raised([&] { object->PlmMyCheckOutList(); });
  expect_raised([&] { object->PlmWf(); });
  expect_raised([&] { object->PlmCode(); });
  expect_raised([&] { object->PlmQuery(); });
  expect_raised([&] { object->PlmImportCurrent(); });
  expect_raised([&] { object->PlmLotimport(); });
  expect_raised([&] { object->PlmCreateMaterial(); });
  expect_raised([&] { object->PlmMyTempMaterial(); });
  expect_raised([&] { object->PlmTaskManage(); });
  expect_raised([&] { object->PlmMaterialBackFill(); });
  expect_raised([&] { object->PlmImportChangeItem(); });
  EXPECT_EQ(Asked(), std::vector<std::string>{});
}

TEST_F(Command, ThatSendsTheLoginRaisesAnInvalidPointerWhileLoggedOut) {
  Connect();
  m_host->Open(MakeModel(L"a.sldprt"));
  for (const auto command : {&ISolidWorksAddIn::OpenDataSelector, &ISolidWorksAddIn::PlmQuery,
                             &ISolidWorksAddIn::PlmTaskManage, &ISolidWorksAddIn::PlmMaterialBackFill}) {
    try {
      (Object().GetInterfacePtr()->*command)();
      ADD_FAILURE() << "no exception";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Error(), E_POINTER);
    }
  }
  EXPECT_EQ(Asked(), std::vector<std::string>{});
}

TEST_F(Command, ThatRaisesIsAnExceptionOfAutomationForTheHostAndOneLogLine) {
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
