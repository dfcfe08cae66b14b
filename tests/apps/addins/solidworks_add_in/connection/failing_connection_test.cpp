// Connecting and disconnecting where calls of the host fail.
#include <gtest/gtest.h>

#include "CZALException.h"
#include "add_in_fixture.h"
#include "host/command_manager.h"
#include "views.h"

namespace {

/// The ways for a call to give nothing.
constexpr HRESULT kWithoutResult[] = {E_FAIL, S_OK, S_FALSE};

class ConnectionToAFailingHost : public AddInTest {
 protected:
  ConnectionToAFailingHost() { m_home.WriteConfiguration(L"View.json", ViewWithItems(2)); }

  std::vector<std::wstring> CalledMethods() const {
    std::vector<std::wstring> methods;
    for (const auto& call : m_host->GetJournal().Calls()) methods.push_back(call.method);
    return methods;
  }

  /// What is to be so after each round.
  void ExpectNothingLeft(const std::string& round) const {
    EXPECT_TRUE(m_host->HeldReferences().empty()) << round;
    EXPECT_EQ(m_home.IconFiles(), std::vector<std::wstring>{}) << round;
  }
};

/// Each host call whose null result the next step uses.
class NullFromHost : public ConnectionToAFailingHost, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(NullFromHost, RaisesAnInvalidPointerAndLeaksNothing) {
  m_host->GetFaults().ReturnNothing(GetParam());
  try {
    Connect();
    FAIL() << "no exception";
  } catch (const _com_error& error) {
    EXPECT_EQ(error.Error(), E_POINTER);
  }
  EXPECT_EQ(PlatformLog().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(, NullFromHost,
                         testing::Values(L"ISldWorks::QueryInterface(ISldWorks)",
                                         L"ISldWorks::GetCommandManager",
                                         L"ICommandManager::CreateCommandGroup2",
                                         L"ICommandManager::AddCommandTab",
                                         L"ICommandTab::AddCommandTabBox"));

TEST_F(ConnectionToAFailingHost, IsMadeAroundEveryCallThatGivesNothing) {
  Connect();
  const auto methods = CalledMethods();
  Disconnect();
  for (const HRESULT result : kWithoutResult) {
    int raised = 0;
    for (std::size_t index = 1; index <= methods.size(); ++index) {
      const std::string round = Utf8(methods[index - 1]) + " " + std::to_string(result);
      RestartHost();
      m_host->GetFaults().FailCall(static_cast<int>(index), result);
      try {
        Connect();
        EXPECT_EQ(m_host->GetJournal().Of(L"ISwAddin::ConnectToSW").at(0).results, L"true") << round;
        Disconnect();
      } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), E_POINTER) << round;
        ++raised;
      }
      ExpectNothingLeft(round);
    }
    // The query, the command manager, the group, and a tab and its box for each of three document types.
    EXPECT_EQ(raised, 9) << result;
  }
}

TEST_F(ConnectionToAFailingHost, GoesWithoutEventsWhereTheyCannotBeHad) {
  for (const HRESULT result : kWithoutResult) {
    for (const wchar_t* method :
         {L"ISldWorks::QueryInterface(IConnectionPointContainer)",
          L"IConnectionPointContainer::FindConnectionPoint", L"IConnectionPoint::Advise"}) {
      RestartHost();
      m_host->GetFaults().Fail(method, 1, result);
      Connect();
      EXPECT_EQ(m_host->AdvisedSinks(), 0u) << Utf8(method) << " " << result;
      EXPECT_EQ(m_host->GetJournal().Of(L"ISwAddin::ConnectToSW").at(0).results, L"true") << Utf8(method);
      EXPECT_FALSE(Disconnect()) << Utf8(method) << " " << result;
      EXPECT_EQ(m_host->Groups().size(), 0u) << "what it put into the host is taken back all the same";
      ExpectNothingLeft(Utf8(method));
    }
  }
}

TEST_F(ConnectionToAFailingHost, UnadvisesNothingUnderTheNumberOfNoSink) {
  m_host->GetFaults().Fail(L"IConnectionPoint::Advise", 1, CONNECT_E_ADVISELIMIT);
  Connect();
  EXPECT_FALSE(Disconnect());
  EXPECT_EQ(m_host->GetJournal().Calls(L"IConnectionPoint::Unadvise").at(0).arguments,
            std::to_wstring(0xFEFEFEFE));
}

/// What was never advised may be advised by another connection.
TEST_F(ConnectionToAFailingHost, IsNoSecondOneWhereTheFirstWasNotAdvised) {
  m_host->GetFaults().Fail(L"IConnectionPoint::Advise", 1, E_FAIL);
  Connect();
  const ISldWorksPtr application = m_host->Application();
  ICommandManagerPtr manager;
  application->GetCommandManager(m_addIn->cookie, &manager);
  VARIANT_BOOL done = VARIANT_FALSE;
  manager->RemoveCommandGroup(0, &done);  // else the host would refuse another one of that id
  EXPECT_EQ(m_addIn->object->ConnectToSW(application, m_addIn->cookie, &done), S_OK);
  EXPECT_EQ(m_host->AdvisedSinks(), 1u);
}

TEST_F(ConnectionToAFailingHost, EndsAroundEveryCallThatGivesNothing) {
  ConnectAndLogIn();
  Disconnect();
  const auto methods = CalledMethods();
  ASSERT_EQ(methods.size(), 5u);
  for (const HRESULT result : kWithoutResult) {
    for (std::size_t index = 1; index <= methods.size(); ++index) {
      const std::string round = Utf8(methods[index - 1]) + " " + std::to_string(result);
      RestartHost();
      ConnectAndLogIn();
      m_host->GetFaults().FailCall(static_cast<int>(index), result);
      const bool unadvised = methods[index - 1].starts_with(L"ICommandManager::") ||
                             (methods[index - 1] == L"IConnectionPoint::Unadvise" && result == S_OK);
      EXPECT_EQ(Disconnect(), unadvised) << round;
      EXPECT_EQ(Asked(), std::vector<std::string>{"QD_PLMLogout "}) << round;
      ExpectNothingLeft(round);
    }
  }
  RestartHost();  // in some rounds the sink was not taken back
}

/// Commands of an object whose connection failed before it had what they need.
TEST_F(ConnectionToAFailingHost, LeavesCommandsThatRaiseAnInvalidPointer) {
  m_home.WriteConfiguration(L"View.json", "{");
  ISwAddinPtr add_in;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in)), S_OK);
  VARIANT_BOOL connected = VARIANT_FALSE;
  EXPECT_THROW(add_in->ConnectToSW(m_host->Application(), 1, &connected), CZALException);
  const ISolidWorksAddInPtr object = add_in;
  for (const auto command : {&ISolidWorksAddIn::PlmLogin, &ISolidWorksAddIn::PlmLogOut,
                             &ISolidWorksAddIn::PlmMyCheckOutList, &ISolidWorksAddIn::PlmWf}) {
    try {
      (object.GetInterfacePtr()->*command)();
      ADD_FAILURE() << "no exception";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Error(), E_POINTER);
    }
  }
  EXPECT_TRUE(m_client->Requests().empty());
  add_in->DisconnectFromSW(&connected);
}

}  // namespace
