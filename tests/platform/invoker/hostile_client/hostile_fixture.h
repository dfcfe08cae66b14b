/// @file The fixture of the tests with a client that is wrong.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostile_server.h"
#include "invoker_fixture.h"

/// What a command came to.
struct Outcome {
  std::wstring answer;
  std::vector<std::wstring> lines;  ///< of the log
};

/// Why a command got no answer, as the log has it.
namespace reasons {

inline constexpr wchar_t kClosed[] = L"the client has closed the connection";
inline constexpr wchar_t kHeader[] = L"the client sent a header that is not valid";
inline constexpr wchar_t kHeaderTooLong[] = L"the client sent a header over 8 KiB";
inline constexpr wchar_t kNoColon[] = L"the client sent a header line without a colon";
inline constexpr wchar_t kNoLength[] = L"the client sent a header without Content-Length";
inline constexpr wchar_t kTwoLengths[] = L"the client sent a header with two Content-Length lines";
inline constexpr wchar_t kLength[] = L"the client sent a Content-Length that is not a number";
inline constexpr wchar_t kTooLong[] = L"the client sent a frame over 64 MiB";
inline constexpr wchar_t kNotJson[] = L"the client sent a message that is not valid JSON";
inline constexpr wchar_t kNotRpc[] = L"the client sent a message that is not JSON-RPC 2.0";
inline constexpr wchar_t kOwnMessage[] = L"the client sent a request or notification instead of the answer";
inline constexpr wchar_t kOtherId[] = L"the client's answer does not have the id of the request";
inline constexpr wchar_t kNoText[] = L"the client's result has no string in \"answer\"";

}  // namespace reasons

/// Whether a command goes over a new connection or over one on which another was answered.
enum class Over { kFirst, kKept };

/// `content` with its header.
std::string FrameOf(std::string_view content);

/// The frame of the answer `text`, which stands in the frame as it is.
std::string AnswerFrame(std::uint64_t id, std::string_view text);

/// A host, and a client that does what the test says. Every command of this host is to end with the client's
/// answer or with the failure that is prescribed, and the next one is to be answered at once.
class HostileClient : public InvokerFixture {
 protected:
  HostileClient();
  ~HostileClient() override;

  /// The id of the host's next command.
  std::uint64_t NextId() const { return m_commands + 1; }

  /// Makes the next command go over such a connection.
  void Prepare(Over connection);

  /// Sends one command while the client does `act`.
  Outcome Try(HostileServer::Act act, const std::wstring& request = L"");

  /// Tries `act`: the command gets no answer, and one line of the log says `reason`.
  void ExpectFailure(HostileServer::Act act, const std::wstring& reason, const std::wstring& request = L"");

  /// Tries `act`: the command gets `answer`, and the log nothing.
  void ExpectAnswer(HostileServer::Act act, const std::wstring& answer);

  /// Waits until the client has done all that it was told.
  void AwaitClient();

  /// The client is right again: the next command is answered at once.
  void ExpectRecovery();

  /// How many connections the host has made.
  int Connections() const { return m_server.Connections(); }

  /// The line of the log for a command that got no answer.
  static std::wstring LineFor(const std::wstring& reason);

 private:
  /// What this process holds.
  struct Held {
    std::size_t handles, heap_blocks;
    int threads;
  };

  static Held WhatIsHeld();
  void CompareWithTheStart();

  HostileServer m_server{m_pipe};
  std::optional<CZALCmdInvoker> m_host;
  std::uint64_t m_commands = 0;  // of m_host
  int m_cases = 0;
  std::optional<Held> m_atStart;  // after the first cases
};
