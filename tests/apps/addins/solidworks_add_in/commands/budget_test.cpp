// What commands may take from the machine: memory of the DLL, handles and threads.
#include <gtest/gtest.h>

#include <process.h>

#include "add_in_fixture.h"
#include "call_count.h"
#include "copy_meter.h"
#include "handle_count.h"
#include "heap_meter.h"
#include "thread_count.h"

namespace {

constexpr int kFewCommands = 10;
constexpr int kManyCommands = 10'000;

HMODULE Dll() { return GetModuleHandleW(L"solidworks_add_in.dll"); }

class AddInBudget : public AddInFixture {
 protected:
  AddInBudget() {
    Answer("QD_PLMGetcode", R"({"__InvokeResult__":true})");
    ConnectAndLogIn();
    Run(kFewCommands);
  }

  void Run(int count) {
    for (int command = 0; command < count; ++command) {
      ASSERT_TRUE(Pick(L"PlmCode").Succeeded());
      m_host->GetJournal().Clear();
    }
  }
};

TEST_F(AddInBudget, KeepsNoMemoryHandleOrThreadOfACommand) {
  const HeapMeter memory(Dll());
  Run(kFewCommands);
  const long long held = memory.Current();
  const std::size_t handles = HandleCount();
  const int threads = ThreadCount();
  Run(kManyCommands);
  const int threads_after = ThreadCount();  // first, because a failed expectation starts a thread
  constexpr long long kTexts = 1024;  // one of the last command may be longer than that of an earlier one
  constexpr std::size_t kLocks = 5;   // a lock makes its event when two threads meet in it for the first time
  EXPECT_LE(memory.Current(), held + kTexts);
  EXPECT_LE(HandleCount(), handles + kLocks);
  EXPECT_EQ(threads_after, threads);
}

TEST_F(AddInBudget, TakesMemoryForACommandSeldom) {
  constexpr double kAllowed = 44;
  const HeapMeter memory(Dll());
  Run(kFewCommands);
  const double allocations = static_cast<double>(memory.Allocations()) / kFewCommands;
  RecordProperty("allocations of a command", std::to_string(allocations));
  EXPECT_GT(allocations, 0);
  EXPECT_LE(allocations, kAllowed);
}

TEST_F(AddInBudget, TakesAndCopiesFewBytesForEachByteOfAnAnswer) {
  constexpr double kAllowedToTake = 6;
  constexpr double kAllowedToCopy = 1.3;
  constexpr std::size_t kBytes = 1'000'000;
  Answer("QD_PLMDataSelector", R"({"__InvokeResult__":true,"remark":")" + std::string(kBytes, 'x') + "\"}");
  const HeapMeter memory(Dll());
  const CopyMeter copies(Dll());
  ASSERT_TRUE(Pick(L"OpenDataSelector").Succeeded());
  const double taken = static_cast<double>(memory.Taken()) / kBytes;
  const double copied = static_cast<double>(copies.Bytes()) / kBytes;
  RecordProperty("bytes taken for a byte", std::to_string(taken));
  RecordProperty("bytes copied for a byte", std::to_string(copied));
  EXPECT_GT(taken, 1);
  EXPECT_LE(taken, kAllowedToTake);
  EXPECT_LE(copied, kAllowedToCopy);
}

TEST_F(AddInBudget, StartsNoThread) {
  Disconnect();
  const CallCount<0, decltype(_beginthreadex)> threads("_beginthreadex", Dll());
  ConnectAndLogIn();
  Run(kFewCommands);
  EXPECT_EQ(threads.Count(), 0);
}

}  // namespace
