/// @file What the tests of the invoker share.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CLogInitializer.h"
#include "CZALCmdInvoker.h"
#include "environment.h"
#include "plm_client/client.h"
#include "plm_client/script.h"
#include "temp_folder.h"

/// A platform root and a log of the test's own, an invoker, and a scripted client where one is started.
class InvokerTest : public testing::Test {
 protected:
  InvokerTest();

  /// Writes PlmClient.json.
  void Configure(std::string_view json) const;

  /// Writes PlmClient.json with this test's pipe and further members, such as R"(,"startTimeoutMs":10)".
  void ConfigurePipe(std::string_view further_members = {}) const;

  /// Starts a client on this test's pipe that answers as `script` says, and configures the pipe.
  void StartClient(plm_client::Settings settings = {});

  /// Starts a client whose handler is the test's own.
  void StartClient(plm_client::Client::Handler handler);

  /// Expects that the client soon has so many connections.
  void AwaitOpenConnections(int count) const;

  /// What Invoke gives for a command with the empty request.
  std::wstring Invoke(const std::wstring& command) { return m_invoker.Invoke(command, L""); }

  /// The lines under "platform" so far, without their head.
  std::vector<std::wstring> PlatformLines() const;

  /// Expects that there is one line, which says that `command` got no answer for a reason that contains
  /// `reason`; forgets it.
  void ExpectOneLine(const std::wstring& command, const std::wstring& reason);

  TempFolder m_folder;
  /// A pipe that no other test uses, also none that runs at the same time.
  const std::wstring m_pipe;
  plm_client::Script m_script;
  std::optional<plm_client::Client> m_client;
  CZALCmdInvoker m_invoker{L"Test", L""};

 private:
  ScopedEnvironment m_home;
  CLogInitializer m_log;
  std::size_t m_linesSeen = 0;
};

/// Milliseconds since an object was made.
class Stopwatch {
 public:
  ULONGLONG Milliseconds() const { return GetTickCount64() - m_start; }

 private:
  ULONGLONG m_start = GetTickCount64();
};
