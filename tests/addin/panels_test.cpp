// Commands that only open a panel of the PLM client, and what every command does without a client.
#include <gtest/gtest.h>

#include "add_in_test.h"

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
    const ISolidWorksAddInPtr face = Face();
    if (GetParam().callback == std::wstring(L"PlmWf")) return face->PlmWf();
    if (GetParam().callback == std::wstring(L"PlmCode")) return face->PlmCode();
    return face->PlmMyTempMaterial();
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
  ISolidWorksAddInPtr face;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&face)), S_OK);
  const auto expect_raised = [](const auto& call) {
    try {
      call();
      ADD_FAILURE() << "no exception";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Error(), E_POINTER);
    }
  };
  expect_raised([&] { face->PlmLogin(); });
  expect_raised([&] { face->PlmLogOut(); });
  expect_raised([&] { face->OpenDataSelector(); });
  expect_raised([&] { face->PlmMyCheckOutList(); });
  expect_raised([&] { face->PlmWf(); });
  expect_raised([&] { face->PlmCode(); });
  expect_raised([&] { face->PlmQuery(); });
  expect_raised([&] { face->PlmImportCurrent(); });
  expect_raised([&] { face->PlmLotimport(); });
  expect_raised([&] { face->PlmCreateMaterial(); });
  expect_raised([&] { face->PlmMyTempMaterial(); });
  expect_raised([&] { face->PlmTaskManage(); });
  expect_raised([&] { face->PlmMaterialBackFill(); });
  expect_raised([&] { face->PlmImportChangeItem(); });
  EXPECT_EQ(Asked(), std::vector<std::string>{});
}

TEST_F(Command, ThatSendsTheLoginRaisesAnInvalidPointerWhileLoggedOut) {
  Connect();
  m_host->Open(MakeModel(L"a.sldprt"));
  for (const auto command : {&ISolidWorksAddIn::OpenDataSelector, &ISolidWorksAddIn::PlmQuery,
                             &ISolidWorksAddIn::PlmTaskManage, &ISolidWorksAddIn::PlmMaterialBackFill}) {
    try {
      (Face().GetInterfacePtr()->*command)();
      ADD_FAILURE() << "no exception";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Error(), E_POINTER);
    }
  }
  EXPECT_EQ(Asked(), std::vector<std::string>{});
}

TEST_F(Command, ThatRaisesIsAnExceptionOfAutomationForTheHostAndOneLogLine) {
  Connect();
  const ISolidWorksAddInPtr face = Face();
  wchar_t name[] = L"PlmWf";
  LPOLESTR names[] = {name};
  DISPID id = 0;
  ASSERT_EQ(face->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &id), S_OK);
  DISPPARAMS none{};
  EXCEPINFO exception{};
  EXPECT_EQ(face->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &none, nullptr, &exception, nullptr),
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
