/// @file The fixture of the tests of the invoker.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CLogInitializer.h"
#include "CZALCmdInvoker.h"
#include "environment.h"
#include "message_boxes.h"
#include "plm_client/client.h"
#include "plm_client/script.h"
#include "temp_folder.h"

/// A temporary platform root with its log, an invoker, and a scripted client if the test starts one. A
/// message box that a test does not expect fails the test.
class InvokerFixture : public testing::Test {
 protected:
  InvokerFixture();

  /// Writes PlmClient.json.
  void Configure(std::string_view json) const;

  /// Writes PlmClient.json with this test's pipe and more members, such as R"(,"startTimeoutMs":10)".
  void ConfigurePipe(std::string_view further_members = {}) const;

  /// Configures this test's pipe and starts a client on it that answers from m_script.
  void StartClient(plm_client::Settings settings = {});

  /// Configures this test's pipe and starts a client on it that answers with `handler`.
  void StartClient(plm_client::Client::Handler handler);

  /// Waits until the client has `count` open connections, at most a second. The test fails if it has not.
  void AwaitOpenConnections(int count) const;

  /// Invokes a command with an empty request.
  std::wstring Invoke(const std::wstring& command) { return m_invoker.Invoke(command, L""); }

  /// Invokes a command for which the client cannot be reached. Expects one message box and closes it.
  std::wstring InvokeUnreached(const std::wstring& command) {
    m_boxes.Expect(IDOK);
    return Invoke(command);
  }

  /// The lines of the logger "platform" so far, without level and logger.
  std::vector<std::wstring> PlatformLines() const;

  /// Those since the last call of this or of ExpectOneLine.
  std::vector<std::wstring> NewPlatformLines();

  /// Expects exactly one new line since the last call. It must log that `command` got no answer, with a
  /// reason that contains `reason`.
  void ExpectOneLine(const std::wstring& command, const std::wstring& reason);

  TempFolder m_folder;
  /// The name of a pipe that no other test uses, not even one that runs at the same time.
  const std::wstring m_pipe;
  plm_client::Script m_script;
  std::optional<plm_client::Client> m_client;
  CZALCmdInvoker m_invoker{L"Test", L""};
  MessageBoxRecorder m_boxes;

 private:
  ScopedEnvironment m_home;
  CLogInitializer m_log;
  std::size_t m_logRead = 0;  // bytes
};

/// Measures the milliseconds since its construction.
class Stopwatch {
 public:
  ULONGLONG Milliseconds() const { return GetTickCount64() - m_start; }

 private:
  ULONGLONG m_start = GetTickCount64();
};
