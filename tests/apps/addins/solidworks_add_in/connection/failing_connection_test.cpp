// Connecting and disconnecting if calls of the host fail.
#include <gtest/gtest.h>

#include "add_in_fixture.h"
#include "log_line.h"
#include "method_case_name.h"
#include "result_codes.h"
#include "views.h"

namespace {

/// The results of a call that returns no object or value.
constexpr HRESULT kWithoutResult[] = {E_FAIL, S_OK, S_FALSE};

class ConnectionToAFailingHost : public AddInFixture {
 protected:
  ConnectionToAFailingHost() { m_home.WriteConfiguration(L"View.json", ViewWithItems(2)); }

  /// Nothing leaks in a round.
  void ExpectNothingLeft(const std::string& round) const {
    EXPECT_TRUE(m_host->HeldReferences().empty()) << round;
    EXPECT_EQ(m_home.IconFiles(), Texts{}) << round;
  }
};

/// A host call that returns null although the next step needs an object, and its name in the log.
struct NullCall {
  const wchar_t* method;
  const wchar_t* logged;
};

class NullFromHost : public ConnectionToAFailingHost, public testing::WithParamInterface<NullCall> {};

TEST_P(NullFromHost, ReturnsInvalidPointerLogsTheCallAndLeaksNothing) {
  for (const HRESULT result : kWithoutResult) {
    RestartHost();
    m_home.Reset();
    m_home.WriteConfiguration(L"View.json", ViewWithItems(2));
    m_host->GetFaults().Fail(GetParam().method, 1, result);

    EXPECT_EQ(TryToConnect(), E_POINTER) << result;

    EXPECT_TRUE(PlatformError().ends_with(L"|connecting to the host failed: " +
                                          std::wstring(GetParam().logged) + L" returned nothing" +
                                          CodeText(E_POINTER)))
        << Utf8(PlatformError());
    EXPECT_EQ(AddInLog(), Texts{});
    ExpectNothingLeft(std::to_string(result));
  }
}

INSTANTIATE_TEST_SUITE_P(
    , NullFromHost,
    testing::Values(NullCall{L"ISldWorks::QueryInterface(ISldWorks)", L"QueryInterface for ISldWorks"},
                    NullCall{L"ISldWorks::GetCommandManager", L"ISldWorks::GetCommandManager"},
                    NullCall{L"ICommandManager::CreateCommandGroup2",
                             L"ICommandManager::CreateCommandGroup2"},
                    NullCall{L"ICommandManager::AddCommandTab", L"ICommandManager::AddCommandTab"},
                    NullCall{L"ICommandTab::AddCommandTabBox", L"ICommandTab::AddCommandTabBox"}),
    [](const auto& test) { return MethodInName(test.param.method); });

TEST_F(ConnectionToAFailingHost, SucceedsUnlessAnObjectThatItNeedsIsMissing) {
  Connect();
  const auto methods = CalledMethods();
  Disconnect();
  for (const HRESULT result : kWithoutResult) {
    int failed = 0;
    for (std::size_t index = 1; index <= methods.size(); ++index) {
      const std::string round = Utf8(methods[index - 1]) + " " + std::to_string(result);
      RestartHost();
      m_host->GetFaults().FailCall(static_cast<int>(index), result);
      const HRESULT code = TryToConnect();
      if (code == S_OK) {
        EXPECT_EQ(m_host->GetJournal().Of(L"ISwAddin::ConnectToSW").at(0).results, L"true") << round;
        Disconnect();
      } else {
        EXPECT_EQ(code, E_POINTER) << round;
        ++failed;
      }
      ExpectNothingLeft(round);
    }
    // The query, the command manager, the group, and a tab and its box for each of three document types.
    EXPECT_EQ(failed, 9) << result;
  }
  EXPECT_EQ(AddInLog(), Texts{});
}

TEST_F(ConnectionToAFailingHost, SucceedsWithoutEventsIfTheSinkCannotBeAdvised) {
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
      EXPECT_EQ(m_host->Groups().size(), 0u) << "the group is removed even so";
      ExpectNothingLeft(Utf8(method));
    }
  }
}

TEST_F(ConnectionToAFailingHost, UnadvisesAnInvalidCookieIfTheSinkWasNotAdvised) {
  m_host->GetFaults().Fail(L"IConnectionPoint::Advise", 1, CONNECT_E_ADVISELIMIT);
  Connect();
  EXPECT_FALSE(Disconnect());
  EXPECT_EQ(m_host->GetJournal().Calls(L"IConnectionPoint::Unadvise").at(0).arguments,
            std::to_wstring(0xFEFEFEFE));
}

TEST_F(ConnectionToAFailingHost, CanConnectAgainIfTheSinkWasNotAdvised) {
  m_host->GetFaults().Fail(L"IConnectionPoint::Advise", 1, E_FAIL);
  Connect();
  RemoveCommandGroup();
  EXPECT_TRUE(ReconnectObject());
  EXPECT_EQ(m_host->AdvisedSinks(), 1u);
}

TEST_F(ConnectionToAFailingHost, DisconnectsAndLogsOutIfAnyCallFails) {
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
      EXPECT_EQ(Asked(), Requests{"QD_PLMLogout "}) << round;
      ExpectNothingLeft(round);
    }
  }
  EXPECT_EQ(m_home.LogLines(), Texts{});
  RestartHost();  // in some rounds the sink stayed advised
}

/// The sink that could not be unadvised counts as not advised; it stays in the host.
TEST_F(ConnectionToAFailingHost, CanConnectAgainIfTheSinkCouldNotBeUnadvised) {
  for (const wchar_t* method :
       {L"ISldWorks::QueryInterface(IConnectionPointContainer)",
        L"IConnectionPointContainer::FindConnectionPoint", L"IConnectionPoint::Unadvise"}) {
    RestartHost();
    Connect();
    m_host->GetFaults().Fail(method, 1, E_FAIL);
    EXPECT_FALSE(DisconnectObject()) << Utf8(method);
    EXPECT_TRUE(ReconnectObject()) << Utf8(method);
    EXPECT_EQ(m_host->AdvisedSinks(), 2u) << Utf8(method);
    m_host->GetJournal().Clear();
    EXPECT_TRUE(Disconnect()) << Utf8(method);
    EXPECT_EQ(m_host->GetJournal().Calls(L"IConnectionPoint::Unadvise").at(0).arguments, L"2");
  }
  RestartHost();  // the first sinks stayed advised
}

/// The connection failed before the object had what its commands need.
TEST_F(ConnectionToAFailingHost, MakesCommandsReturnInvalidPointerAfterAFailedConnection) {
  m_home.WriteConfiguration(L"View.json", "{");
  m_host->Open(MakeModel(L"a.sldprt"));
  ISwAddinPtr add_in;
  ASSERT_EQ(CoCreateInstance(CLSID_SwAddin, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&add_in)), S_OK);
  VARIANT_BOOL connected = VARIANT_TRUE;
  EXPECT_EQ(add_in->ConnectToSW(m_host->Application(), 1, &connected), hr::kJsonWrongType);
  EXPECT_EQ(connected, VARIANT_FALSE);
  EXPECT_NE(PlatformError(), L"");
  for (const DirectCommand& command : kAllCommands) ExpectEndedException(add_in, command, E_POINTER);
  EXPECT_TRUE(m_client->Requests().empty());
  add_in->DisconnectFromSW(&connected);
}

}  // namespace
