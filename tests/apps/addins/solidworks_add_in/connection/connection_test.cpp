// Connecting to the host and disconnecting from it.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "list_difference.h"
#include "log_line.h"
#include "views.h"

namespace {

class Connection : public AddInFixture {
 protected:
  Connection() { m_home.WriteConfiguration(L"View.json", ViewWithItems(2)); }

  /// An add-in object that the host has not connected.
  static ISwAddinPtr CreateAddIn() {
    ISwAddinPtr add_in;
    EXPECT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in)), S_OK);
    return add_in;
  }

  /// The ends of the platform's information lines that say that the add-in is connected.
  Texts ConnectedLines() const {
    Texts ends;
    for (const std::wstring& line : m_home.PlatformInformation()) {
      const std::size_t end = line.find(L"|connected to ");
      if (end != std::wstring::npos) ends.push_back(line.substr(end));
    }
    return ends;
  }
};

TEST_F(Connection, CallsTheHostInAFixedOrder) {
  Connect();
  EXPECT_SAME_ENTRIES(
      CalledMethods(),
      Texts{L"ISldWorks::QueryInterface(ISldWorks)", L"ISldWorks::GetCommandManager",
            L"ISldWorks::SetAddinCallbackInfo", L"ISldWorks::RevisionNumber",
            L"ICommandManager::GetCommandIDsCount", L"ICommandManager::IGetGroupDataFromRegistry",
            L"ICommandManager::CreateCommandGroup2", L"ICommandGroup::put_LargeIconList",
            L"ICommandGroup::put_SmallIconList", L"ICommandGroup::AddCommandItem",
            L"ICommandGroup::AddCommandItem", L"ICommandGroup::put_HasToolbar", L"ICommandGroup::put_HasMenu",
            L"ICommandGroup::Activate",
            // assembly
            L"ICommandManager::GetCommandTab", L"ICommandManager::AddCommandTab",
            L"ICommandTab::AddCommandTabBox", L"ICommandTab::put_Visible", L"ICommandGroup::get_CommandID",
            L"ICommandGroup::get_CommandID", L"ICommandTabBox::IAddCommands",
            // drawing
            L"ICommandManager::GetCommandTab", L"ICommandManager::AddCommandTab",
            L"ICommandTab::AddCommandTabBox", L"ICommandTab::put_Visible", L"ICommandGroup::get_CommandID",
            L"ICommandGroup::get_CommandID", L"ICommandTabBox::IAddCommands",
            // part
            L"ICommandManager::GetCommandTab", L"ICommandManager::AddCommandTab",
            L"ICommandTab::AddCommandTabBox", L"ICommandTab::put_Visible", L"ICommandGroup::get_CommandID",
            L"ICommandGroup::get_CommandID", L"ICommandTabBox::IAddCommands",
            // events
            L"ISldWorks::QueryInterface(IConnectionPointContainer)",
            L"IConnectionPointContainer::FindConnectionPoint", L"IConnectionPoint::Advise"});
}

TEST_F(Connection, PassesItsCookieItsDispatchInterfaceAndTheLowHalfOfItsModuleHandle) {
  Connect();
  EXPECT_EQ(m_addIn->callbacks.GetInterfacePtr(), Object().GetInterfacePtr());
  const HMODULE dll = GetModuleHandleW(L"solidworks_add_in.dll");
  EXPECT_EQ(m_addIn->module_handle, static_cast<long>(reinterpret_cast<LONG_PTR>(dll)));
  const auto cookie = std::to_wstring(m_addIn->cookie);
  EXPECT_EQ(m_host->GetJournal().Calls(L"ISldWorks::GetCommandManager").at(0).arguments, cookie);
  EXPECT_TRUE(m_host->GetJournal()
                  .Calls(L"ISldWorks::SetAddinCallbackInfo")
                  .at(0)
                  .arguments.ends_with(L", " + cookie));
}

TEST_F(Connection, ReportsToTheHostThatItIsConnected) {
  Connect();
  const auto connects = m_host->GetJournal().Of(L"ISwAddin::ConnectToSW");
  ASSERT_EQ(connects.size(), 1u);
  EXPECT_EQ(connects[0].result, S_OK);
  EXPECT_EQ(connects[0].results, L"true");
}

TEST_F(Connection, LogsTheHostsRevisionAndThePathOfTheMenusFile) {
  RestartHost(L"31.2.1");
  Connect();
  EXPECT_EQ(ConnectedLines(), Texts{L"|connected to the host of revision \"31.2.1\", menu from " +
                                    m_home.ConfigurationPath(L"View.json")});
  EXPECT_EQ(m_home.LogLines(), Texts{}) << "nothing failed";
}

TEST_F(Connection, LogsThatItIsConnectedOnlyIfItIs) {
  m_home.WriteConfiguration(L"View.json", "{");
  EXPECT_NE(TryToConnect(), S_OK);
  EXPECT_EQ(ConnectedLines(), Texts{});
}

TEST_F(Connection, CallsTheHostInAFixedOrderToDisconnect) {
  Connect();
  const auto icons = m_home.IconFiles();
  ASSERT_EQ(icons.size(), 2u);
  m_host->GetJournal().Clear();
  bool icons_exist = true;
  m_host->GetFaults().Before(L"ICommandManager::RemoveFlyoutGroup", 1,
                             [&] { icons_exist = !m_home.IconFiles().empty(); });
  EXPECT_TRUE(Disconnect());
  EXPECT_FALSE(icons_exist) << "the icon files are deleted first";
  EXPECT_SAME_ENTRIES(
      HostCalls(), Texts{L"ICommandManager::RemoveFlyoutGroup(99)", L"ICommandManager::RemoveCommandGroup(0)",
                         L"ISldWorks::QueryInterface(IConnectionPointContainer)()",
                         L"IConnectionPointContainer::FindConnectionPoint(the application events)",
                         L"IConnectionPoint::Unadvise(1)"});
}

/// The add-in logs the user out last, while it still holds references to the host.
TEST_F(Connection, LogsOutAfterAllHostCalls) {
  ConnectAndLogIn();
  Texts called_before;
  std::size_t held_at_logout = 0;
  ServeWith([&](const plm_client::Request& request, std::stop_token) {
    EXPECT_EQ(request.command, "QD_PLMLogout");
    called_before = CalledMethods();
    held_at_logout = m_host->HeldReferences().size();
    return plm_client::Reply::Text(R"({"__InvokeResult__":true})");
  });
  EXPECT_TRUE(Disconnect());
  EXPECT_SAME_ENTRIES(
      called_before, Texts{L"ICommandManager::RemoveFlyoutGroup", L"ICommandManager::RemoveCommandGroup",
                           L"ISldWorks::QueryInterface(IConnectionPointContainer)",
                           L"IConnectionPointContainer::FindConnectionPoint", L"IConnectionPoint::Unadvise"});
  EXPECT_EQ(held_at_logout, 2u) << "the application and the command manager";
}

TEST_F(Connection, DoesNotLogOutAUserWhoIsNotLoggedIn) {
  Connect();
  Disconnect();
  EXPECT_EQ(Asked(), Requests{});
}

TEST_F(Connection, DisconnectingWithoutAConnectionDoesNothing) {
  const ISwAddinPtr add_in = CreateAddIn();
  VARIANT_BOOL disconnected = VARIANT_TRUE;
  EXPECT_EQ(add_in->DisconnectFromSW(&disconnected), S_OK);
  EXPECT_EQ(disconnected, VARIANT_FALSE);
}

TEST_F(Connection, DisconnectingTwiceDoesNothingTheSecondTime) {
  Connect();
  EXPECT_TRUE(DisconnectObject());
  EXPECT_FALSE(DisconnectObject());
}

/// What the host tells of the objects that it served, while the add-in lets go of them.
TEST_F(Connection, IsEndedByReleasingTheCommandManagerBeforeTheApplication) {
  Connect();
  Texts released;
  m_host->OnLastRelease([&](const std::wstring& object) { released.push_back(object); });
  EXPECT_TRUE(Disconnect());
  EXPECT_SAME_ENTRIES(released, Texts{L"the connection point of the application events",
                                      L"the command manager", L"the application"});
}

/// A host that releases the add-in without disconnecting it.
TEST_F(Connection, OfADestroyedObjectIsReleasedInTheSameOrderAfterTheIconFiles) {
  Connect();
  ASSERT_EQ(m_home.IconFiles().size(), 2u);
  Texts released;
  m_host->OnLastRelease([&](const std::wstring& object) {
    released.push_back(object + (m_home.IconFiles().empty() ? L"" : L", with icon files"));
  });
  m_addIn->callbacks = nullptr;
  m_addIn->object = nullptr;
  EXPECT_SAME_ENTRIES(released, Texts{L"the command manager", L"the application"});
  RestartHost();  // that host has no add-in to disconnect
}

/// The logout fails, so that there still is a login result.
TEST_F(Connection, IsNotNeededToSendTheLoginResultToTheClient) {
  ConnectAndLogIn();
  Answer("QD_PLMLogout", "{}");
  EXPECT_TRUE(DisconnectObject());
  EXPECT_EQ(Object()->PlmWf(), S_OK);
  EXPECT_EQ(Asked(), (Requests{"QD_PLMLogout ", std::string("QD_PLMStartWF ") + kLoginAnswer}));
}

/// Even if the logout of the previous connection failed.
TEST_F(Connection, StartsLoggedOutIfTheSameObjectConnectsAgain) {
  ConnectAndLogIn();
  Answer("QD_PLMLogout", "{}");
  DisconnectObject();
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 1);
  ReconnectObject();
  EXPECT_EQ(Enabled(L"EnablePlmLogOut"), 0);
  EXPECT_EQ(Enabled(L"EnablePlmLogin"), 1);
}

TEST_F(Connection, IsPossibleAgainAfterADisconnection) {
  Connect();
  EXPECT_TRUE(DisconnectObject());
  EXPECT_TRUE(ReconnectObject());
  EXPECT_EQ(m_host->Groups().size(), 1u);
  EXPECT_EQ(m_host->AdvisedSinks(), 1u);
}

TEST_F(Connection, MadeAgainWithoutDisconnectingFailsAndIsLogged) {
  Connect();
  RemoveCommandGroup();
  VARIANT_BOOL connected = VARIANT_TRUE;
  ASSERT_EQ(m_addIn->object->ConnectToSW(m_host->Application(), m_addIn->cookie, &connected), E_FAIL);
  EXPECT_EQ(connected, VARIANT_FALSE);
  const std::wstring line = PlatformError();
  EXPECT_TRUE(
      line.ends_with(L"|connecting to the host failed: the add-in is connected already" + CodeText(E_FAIL)))
      << Utf8(line);
}

TEST_F(Connection, ReturnsInvalidPointerForANullHost) {
  for (const ISwAddinPtr& add_in : {CreateAddIn(), CreateAddIn()}) {
    m_home.Reset();
    VARIANT_BOOL connected = VARIANT_TRUE;
    ASSERT_EQ(add_in->ConnectToSW(nullptr, 1, &connected), E_POINTER);
    EXPECT_EQ(connected, VARIANT_FALSE);
    EXPECT_TRUE(PlatformError().ends_with(
        L"|connecting to the host failed: QueryInterface for ISldWorks returned nothing" +
        CodeText(E_POINTER)));
  }
}

TEST_F(Connection, FailsEvenIfTheHostDoesNotAskWhetherItIsConnected) {
  EXPECT_EQ(CreateAddIn()->ConnectToSW(nullptr, 1, nullptr), E_POINTER);
  EXPECT_NE(PlatformError(), L"");
}

}  // namespace
