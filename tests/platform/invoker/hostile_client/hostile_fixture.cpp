#include "hostile_fixture.h"

#include <chrono>
#include <iostream>
#include <utility>

#include "handle_count.h"
#include "heap_blocks.h"
#include "run_tests.h"
#include "thread_count.h"

namespace {

constexpr wchar_t kCommand[] = L"QD_PLMQuery";
constexpr ULONGLONG kAtOnce = 1'500;  // milliseconds, long enough for a busy machine

// A command that has no end is ended by then, with a line that no test expects.
constexpr std::chrono::seconds kHang{20};

// So many cases until everything has been made that is made once.
constexpr int kFirstCases = 20;
constexpr std::size_t kFewHandles = 10, kFewBlocks = 100;  // less than one for each case

}  // namespace

std::string FrameOf(std::string_view content) {
  return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + std::string(content);
}

std::string AnswerFrame(std::uint64_t id, std::string_view text) {
  return FrameOf(R"({"jsonrpc":"2.0","id":)" + std::to_string(id) + R"(,"result":{"answer":")" +
                 std::string(text) + "\"}}");
}

HostileClient::HostileClient() {
  SetRunningStep("");
  ConfigurePipe();
  m_host.emplace(L"Test", L"");
}

HostileClient::~HostileClient() {
  CompareWithTheStart();
  std::cout << m_cases << " cases\n";
}

void HostileClient::Prepare(Over connection) {
  if (connection == Over::kKept) {
    ExpectRecovery();
  } else {
    m_host.emplace(L"Test", L"");
    m_commands = 0;
  }
}

Outcome HostileClient::Try(HostileServer::Act act, const std::wstring& request) {
  if (++m_cases == kFirstCases) m_atStart = WhatIsHeld();
  ++m_commands;
  m_server.Add(std::move(act));
  return {m_host->Invoke(kCommand, request, {.timeout = kHang}), NewPlatformLines()};
}

void HostileClient::ExpectFailure(HostileServer::Act act, const std::wstring& reason,
                                  const std::wstring& request) {
  const Outcome outcome = Try(std::move(act), request);
  EXPECT_EQ(outcome.answer, L"");
  EXPECT_EQ(outcome.lines, std::vector{LineFor(reason)});
}

void HostileClient::ExpectAnswer(HostileServer::Act act, const std::wstring& answer) {
  const Outcome outcome = Try(std::move(act));
  EXPECT_EQ(outcome.answer, answer);
  EXPECT_TRUE(outcome.lines.empty()) << testing::PrintToString(outcome.lines);
}

void HostileClient::AwaitClient() {
  EXPECT_TRUE(m_server.AwaitEnd()) << "the client waits for a host that is not there";
}

void HostileClient::ExpectRecovery() {
  const Stopwatch watch;
  ExpectAnswer(
      [answer = AnswerFrame(NextId(), "right")](Conversation& host) {
        host.ReadRequest();
        host.Write(answer);
      },
      L"right");
  EXPECT_LT(watch.Milliseconds(), kAtOnce);
  AwaitClient();
}

std::wstring HostileClient::LineFor(const std::wstring& reason) {
  return std::wstring(L"PLM command [") + kCommand + L"] got no answer: " + reason;
}

HostileClient::Held HostileClient::WhatIsHeld() { return {HandleCount(), HeapBlockCount(), ThreadCount()}; }

void HostileClient::CompareWithTheStart() {
  if (!m_atStart) return;
  const Held now = WhatIsHeld();
  EXPECT_LT(now.handles, m_atStart->handles + kFewHandles);
  EXPECT_LT(now.heap_blocks, m_atStart->heap_blocks + kFewBlocks);
  EXPECT_LE(now.threads, m_atStart->threads);
}
