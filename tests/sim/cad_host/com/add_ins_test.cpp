// Loading, connecting and calling add-ins.
#include "case_name.h"
#include "host/command_manager.h"
#include "host_fixture.h"
#include "registered_add_in.h"
#include "test_add_in.h"

namespace {

using cad_host::AddIn;
using cad_host::HostError;
using cad_host::PickResult;

constexpr long kGroup = 0;

/// The add-in has one command item, "Item", with the callback "Run" and the enable method "MayRun".
class AddInsTest : public HostTest {
 protected:
  AddInsTest() {
    m_addIn.on_connect = [this](IDispatch* host, long cookie, VARIANT_BOOL*) {
      m_cookie = cookie;
      const ISldWorksPtr application = ApplicationOf(host);
      VARIANT_BOOL flag = VARIANT_FALSE;
      application->SetAddinCallbackInfo(7, static_cast<IDispatch*>(&m_addIn), cookie, &flag);
      EXPECT_EQ(flag, VARIANT_TRUE);
      ICommandManagerPtr manager;
      application->GetCommandManager(cookie, &manager);
      ICommandGroupPtr group;
      long number = 0;
      manager->CreateCommandGroup2(kGroup, CComBSTR(L"Group"), CComBSTR(L""), CComBSTR(L""), -1,
                                   VARIANT_FALSE, &number, &group);
      group->AddCommandItem(CComBSTR(L"Item"), -1, CComBSTR(L""), CComBSTR(L""), 0, CComBSTR(L"Run"),
                            CComBSTR(L"MayRun"), 0, &number);
      group->Activate(&flag);
      return S_OK;
    };
    m_addIn.methods[L"Run"] = [this](DISPPARAMS& arguments, VARIANT*, EXCEPINFO*) {
      EXPECT_EQ(arguments.cArgs, 0u);
      ++m_runs;
      return S_OK;
    };
    EnableByReference(1);
  }

  void TearDown() override {
    HostTest::TearDown();
    for (const auto& add_in : Host().ConnectedAddIns())
      EXPECT_EQ(add_in->object, nullptr) << "still connected";
    EXPECT_EQ(m_addIn.References(), 0u);
  }

  AddIn& Connect() { return Host().Connect(&m_addIn, L"Test add-in"); }

  void EnableByReference(long status) {
    m_addIn.methods[L"MayRun"] = [status](DISPPARAMS& arguments, VARIANT*, EXCEPINFO*) {
      EXPECT_EQ(arguments.cArgs, 1u);
      EXPECT_EQ(arguments.rgvarg[0].vt, VT_BYREF | VT_I4);
      *arguments.rgvarg[0].plVal = status;
      return S_OK;
    };
  }

  void EnableByResult(long status) {
    m_addIn.methods[L"MayRun"] = [status](DISPPARAMS& arguments, VARIANT* result, EXCEPINFO*) {
      if (arguments.cArgs > 0) return DISP_E_BADPARAMCOUNT;
      result->vt = VT_I4;
      result->lVal = status;
      return S_OK;
    };
  }

  TestAddIn m_addIn;
  long m_cookie = 0;
  int m_runs = 0;
};

TEST_F(AddInsTest, ConnectsAndReleasesAtTheEnd) {
  AddIn& add_in = Connect();
  EXPECT_NE(m_cookie, 0);
  EXPECT_EQ(add_in.cookie, m_cookie);
  EXPECT_EQ(add_in.module_handle, 7);
  EXPECT_TRUE(Host().Disconnect(add_in));
  EXPECT_TRUE(Host().ConnectedAddIns().empty());
}

TEST_F(AddInsTest, ReportsAnAddInThatDoesNotDisconnect) {
  m_addIn.on_disconnect = [](VARIANT_BOOL* disconnected) {
    *disconnected = VARIANT_FALSE;
    return S_OK;
  };
  EXPECT_FALSE(Host().Disconnect(Connect()));
}

TEST_F(AddInsTest, AnAddInThatDoesNotConnectIsReleased) {
  m_addIn.on_connect = [](IDispatch*, long, VARIANT_BOOL* connected) {
    *connected = VARIANT_FALSE;
    return S_OK;
  };
  EXPECT_THROW(Connect(), HostError);
  EXPECT_TRUE(Host().ConnectedAddIns().empty());
}

TEST_F(AddInsTest, PassesOnAnExceptionOfConnectToSW) {
  m_addIn.on_connect = [](IDispatch*, long, VARIANT_BOOL*) -> HRESULT { throw 42; };
  EXPECT_THROW(Connect(), int);
  EXPECT_TRUE(Host().ConnectedAddIns().empty());
  EXPECT_TRUE(Journal().Contains(L"left by an exception"));
}

TEST_F(AddInsTest, PicksByMenuTextAndByCallback) {
  AddIn& add_in = Connect();
  EXPECT_TRUE(Host().Pick(add_in, L"Item").Succeeded());
  EXPECT_TRUE(Host().Pick(add_in, L"Run").Succeeded());
  EXPECT_EQ(m_runs, 2);
  EXPECT_THROW(Host().Pick(add_in, L"Other"), HostError);
  Host().Disconnect(add_in);
}

struct StatusCase {
  const char* name;
  long status;
  bool enabled;
};

class StatusTest : public AddInsTest, public testing::WithParamInterface<StatusCase> {};

TEST_P(StatusTest, EnablesTheItemAsTheEnableMethodSays) {
  AddIn& add_in = Connect();
  EnableByReference(GetParam().status);
  EXPECT_EQ(Host().Pick(add_in, L"Item").enabled, GetParam().enabled);
  EnableByResult(GetParam().status);
  EXPECT_EQ(Host().Pick(add_in, L"Item").enabled, GetParam().enabled);
  EXPECT_EQ(m_runs, GetParam().enabled ? 2 : 0);
  Host().Disconnect(add_in);
}

const StatusCase kStatuses[] = {{"Disabled", 0, false},
                                {"Enabled", 1, true},
                                {"DisabledAndPressed", 2, false},
                                {"EnabledAndPressed", 3, true},
                                {"UnknownStatus", 4, false}};

INSTANTIATE_TEST_SUITE_P(, StatusTest, testing::ValuesIn(kStatuses), CaseName<StatusCase>);

/// An enable method that can store its number and return another one.
TEST_F(AddInsTest, OffersTheEnableMethodAnArgumentUnlessTheQuirkIsOff) {
  AddIn& add_in = Connect();
  m_addIn.methods[L"MayRun"] = [](DISPPARAMS& arguments, VARIANT* result, EXCEPINFO*) {
    if (arguments.cArgs > 0) *arguments.rgvarg[0].plVal = 0;
    result->vt = VT_I4;
    result->lVal = 1;
    return S_OK;
  };
  EXPECT_FALSE(Host().IsEnabled(add_in, L"Item"));
  Host().GetQuirks().Set(cad_host::Quirk::kEnableArgument, false);
  EXPECT_TRUE(Host().IsEnabled(add_in, L"Item"));
  Host().Disconnect(add_in);
}

TEST_F(AddInsTest, AnItemIsDisabledIfItsEnableMethodFails) {
  AddIn& add_in = Connect();
  m_addIn.methods[L"MayRun"] = [](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return E_FAIL; };
  EXPECT_FALSE(Host().IsEnabled(add_in, L"Item"));
  Host().Disconnect(add_in);
}

TEST_F(AddInsTest, AnItemIsEnabledIfItsEnableMethodIsMissing) {
  AddIn& add_in = Connect();
  m_addIn.methods.erase(L"MayRun");
  EXPECT_TRUE(Host().IsEnabled(add_in, L"Item"));
  EXPECT_TRUE(Journal().Contains(L"enable method MayRun not found"));
  Host().Disconnect(add_in);
}

TEST_F(AddInsTest, ReportsTheExceptionOfACallback) {
  AddIn& add_in = Connect();
  m_addIn.methods[L"Run"] = [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
    exception->scode = E_ACCESSDENIED;
    exception->bstrSource = SysAllocString(L"the add-in");
    exception->bstrDescription = SysAllocString(L"not allowed");
    return DISP_E_EXCEPTION;
  };
  const PickResult picked = Host().Pick(add_in, L"Item");
  EXPECT_EQ(picked.result, DISP_E_EXCEPTION);
  EXPECT_EQ(picked.code, E_ACCESSDENIED);
  EXPECT_EQ(picked.source, L"the add-in");
  EXPECT_EQ(picked.description, L"not allowed");
  EXPECT_TRUE(Journal().Contains(L"-> Run() = 0x80020009, 0x80070005, \"the add-in\", \"not allowed\""));
  Host().Disconnect(add_in);
}

TEST_F(AddInsTest, TheCommandManagerIsDisconnectedWithTheAddIn) {
  ICommandManagerPtr kept;
  AddIn& add_in = Connect();
  Host().Application()->GetCommandManager(m_cookie, &kept);
  Host().Disconnect(add_in);
  VARIANT_BOOL removed = VARIANT_TRUE;
  EXPECT_EQ(kept->RemoveCommandGroup(kGroup, &removed), RPC_E_DISCONNECTED);
  EXPECT_EQ(removed, VARIANT_FALSE);
}

TEST_F(AddInsTest, AnUnknownCookieGetsNoCommandManager) {
  ICommandManagerPtr manager;
  EXPECT_EQ(Host().Application()->GetCommandManager(99, &manager), S_OK);
  EXPECT_FALSE(manager);
}

TEST_F(AddInsTest, LoadsARegisteredAddIn) {
  m_addIn.on_connect = nullptr;
  const RegisteredAddIn registered(L"A registered add-in", &m_addIn);
  bool listed = false;
  for (const cad_host::AddInEntry& entry : cad_host::Host::RegisteredAddIns()) {
    if (entry.clsid != RegisteredAddIn::kClsid) continue;
    listed = true;
    EXPECT_EQ(entry.title, L"A registered add-in");
    EXPECT_EQ(entry.description, RegisteredAddIn::kDescription);
    EXPECT_TRUE(entry.loads_at_start);
  }
  EXPECT_TRUE(listed);
  EXPECT_TRUE(Host().Disconnect(Host().Connect(L"a registered ADD-IN")));
  EXPECT_TRUE(Host().Disconnect(Host().Connect(RegisteredAddIn::kClsid)));
}

TEST_F(AddInsTest, FailsIfTheAddInIsNotRegistered) {
  try {
    Host().Connect(L"No such add-in");
    FAIL() << "connected";
  } catch (const HostError& error) {
    EXPECT_NE(error.Message().find(L"No such add-in"), std::wstring::npos);
  }
}

TEST_F(AddInsTest, EndingTheSessionDisconnectsTheAddIns) {
  Connect();
  bool disconnected = false;
  m_addIn.on_disconnect = [&](VARIANT_BOOL*) {
    disconnected = true;
    return S_OK;
  };
  Restart();
  EXPECT_TRUE(disconnected);
  EXPECT_EQ(m_addIn.References(), 0u);
}

}  // namespace
