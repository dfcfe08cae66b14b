// What a command may cost on a connection that is kept: calls of the system, which are what its time is made
// of.
#include <gtest/gtest.h>

#include <objbase.h>

#include "call_count.h"
#include "host_thread.h"
#include "invoker_fixture.h"
#include "server_calls.h"

namespace {

class CommandBudget : public InvokerFixture {
 protected:
  CommandBudget() {
    StartClient();
    m_script.Always("QD_PLMGetcode", plm_client::Reply::Text("{}"));
    EXPECT_EQ(Invoke(L"QD_PLMGetcode"), L"{}");
  }

  const Apartment m_apartment{COINIT_APARTMENTTHREADED};
};

constexpr int kCommands = 20;

TEST_F(CommandBudget, MakesNoSystemObject) {
  const CallCount<0, decltype(CreateEventW)> events("CreateEventW");
  const CallCount<0, decltype(CreateFileW)> files("CreateFileW");
  const CallCount<0, decltype(CloseHandle)> closed("CloseHandle");
  for (int command = 0; command < kCommands; ++command) EXPECT_EQ(Invoke(L"QD_PLMGetcode"), L"{}");
  EXPECT_EQ(events.Count(), 0);
  EXPECT_EQ(files.Count(), 0);
  EXPECT_EQ(closed.Count(), 0);
}

TEST_F(CommandBudget, ReadsWritesAndAsksTheQueueAsOftenAsItMust) {
  const CallCount<0, decltype(GetNamedPipeServerProcessId)> servers("GetNamedPipeServerProcessId");
  const CallCount<0, decltype(ReadFile)> reads("ReadFile");
  const CallCount<0, decltype(WriteFile)> writes("WriteFile");
  const CallCount<0, decltype(PeekMessageW)> messages("PeekMessageW");
  const CallCount<0, decltype(GetQueueStatus)> statuses("GetQueueStatus");
  const CallCount<0, decltype(CoWaitForMultipleHandles)> waits("CoWaitForMultipleHandles");
  for (int command = 0; command < kCommands; ++command) EXPECT_EQ(Invoke(L"QD_PLMGetcode"), L"{}");
  EXPECT_EQ(servers.Count(), 0);
  EXPECT_EQ(reads.Count(), kCommands);
  EXPECT_EQ(writes.Count(), kCommands);
  // The wait begins and ends with a look for input, and looks again before each of its two waits at most.
  EXPECT_EQ(messages.Count(), 0);
  EXPECT_LE(statuses.Count(), 4 * kCommands);
  EXPECT_LE(waits.Count(), 2 * kCommands);
  EXPECT_GT(waits.Count(), 0);
}

// The client of the test calls it from other threads, which are not counted.
TEST_F(CommandBudget, CallsTheServerOfWineSeldom) {
  constexpr double kAllowed = 10.5;  // 10, or fewer if the answer is there at once
  const ServerCalls calls;
  for (int command = 0; command < kCommands; ++command) EXPECT_EQ(Invoke(L"QD_PLMGetcode"), L"{}");
  const double calls_of_command = static_cast<double>(calls.Count()) / kCommands;
  RecordProperty("calls of a command", std::to_string(calls_of_command));
  EXPECT_GT(calls_of_command, 2) << "a command writes and reads at least";
  EXPECT_LE(calls_of_command, kAllowed);
}

TEST_F(CommandBudget, ReadsALargeAnswerInFewPieces) {
  constexpr std::size_t kMiB = 1024 * 1024;
  const std::string text(8 * kMiB, 'x');
  m_script.Always("QD_PLMGetcode", plm_client::Reply::Text(text));
  const CallCount<0, decltype(WriteFile)> writes("WriteFile");
  EXPECT_EQ(Invoke(L"QD_PLMGetcode").size(), text.size());
  EXPECT_EQ(writes.Count(), 1);
}

}  // namespace
