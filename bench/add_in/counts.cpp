// What a connection and commands take from the machine and what they leave behind, counted. Prints two
// tables: "state NAME THREADS HANDLES HEAP PRIVATE DLL", the last three in bytes, and "count NAME VALUE".
#include <windows.h>
// After windows.h, which it needs.
#include <process.h>

#include <cstdio>

#include "add_in/connected_session.h"
#include "call_count.h"
#include "copy_meter.h"
#include "handle_count.h"
#include "heap_blocks.h"
#include "heap_meter.h"
#include "module/add_in_dll.h"
#include "thread_count.h"
#include "unix_process.h"

namespace {

constexpr int kFew = 10;
constexpr int kMany = 10'000;
constexpr char kAnswer[] = R"({\"__InvokeResult__\":true})";

HMODULE Dll() { return GetModuleHandleW(L"solidworks_add_in.dll"); }

/// The memory that only this process has. Wine itself tells 0.
long long PrivateBytes() { return 1024 * UnixCount("status", "RssAnon"); }

void PrintState(const char* name, long long of_dll = 0) {
  std::printf("state %s %d %zu %zu %lld %lld\n", name, ThreadCount(), HandleCount(), CountHeaps().bytes,
              PrivateBytes(), of_dll);
}

void PrintCount(const char* name, double value) { std::printf("count %s %g\n", name, value); }

void Run(ConnectedSession& session, int count) {
  for (int command = 0; command < count; ++command) {
    session.Pick(L"PlmCode");
    session.Host().GetJournal().Clear();
  }
}

/// How often the DLL makes a system object.
class MadeObjects {
 public:
  int Count() const {
    return m_events.Count() + m_narrowEvents.Count() + m_files.Count() + m_mutexes.Count() +
           m_semaphores.Count() + m_threads.Count() + m_processes.Count();
  }

 private:
  const CallCount<0, decltype(CreateEventW)> m_events{"CreateEventW", Dll()};
  const CallCount<0, decltype(CreateEventA)> m_narrowEvents{"CreateEventA", Dll()};
  const CallCount<0, decltype(CreateFileW)> m_files{"CreateFileW", Dll()};
  const CallCount<0, decltype(CreateMutexW)> m_mutexes{"CreateMutexW", Dll()};
  const CallCount<0, decltype(CreateSemaphoreA)> m_semaphores{"CreateSemaphoreA", Dll()};
  const CallCount<0, decltype(_beginthreadex)> m_threads{"_beginthreadex", Dll()};
  const CallCount<0, decltype(CreateProcessW)> m_processes{"CreateProcessW", Dll()};
};

/// The states of the process, from before the DLL is loaded to after many commands.
void PrintStates() {
  ConnectedSession session("tavo-bench-states", kAnswer);
  PrintState("before");
  session.Connect();
  const HeapMeter memory(Dll());
  PrintState("connected");
  session.Pick(L"PlmLogin");
  Run(session, 1);
  PrintState("1", memory.Current());
  Run(session, kFew - 1);
  PrintState("10", memory.Current());
  Run(session, kMany - kFew);
  PrintState("10000", memory.Current());
}

void PrintCountsOfACommand() {
  ConnectedSession session("tavo-bench-counts", kAnswer);
  session.Connect();
  PrintCount("host_calls_of_connect", static_cast<double>(session.Host().GetJournal().Calls().size()));
  session.Pick(L"PlmLogin");
  Run(session, kFew);
  session.Pick(L"PlmCode");
  PrintCount("host_calls", static_cast<double>(session.Host().GetJournal().Calls().size()));
  const HeapMeter memory(Dll());
  const MadeObjects objects;
  Run(session, kFew);
  PrintCount("objects", static_cast<double>(objects.Count()) / kFew);
  PrintCount("allocations", static_cast<double>(memory.Allocations()) / kFew);
}

/// The login is the command that reads its answer without a document or another command before it.
void PrintCountsOfALargeAnswer() {
  constexpr std::size_t kBytes = 1'000'000;
  ConnectedSession session("tavo-bench-large-counts", R"({\"__InvokeResult__\":true,\"remark\":\")" +
                                                          std::string(kBytes, 'x') + R"(\"})");
  session.Connect();
  const HeapMeter memory(Dll());
  const CopyMeter copies(Dll());
  session.Pick(L"PlmLogin");
  PrintCount("bytes_taken", static_cast<double>(memory.Taken()) / kBytes);
  PrintCount("bytes_copied", static_cast<double>(copies.Bytes()) / kBytes);
}

}  // namespace

int main() {
  const ComApartment com;
  AddInDll().RegisterServer();  // and unloads the DLL
  PrintStates();
  PrintCountsOfACommand();
  PrintCountsOfALargeAnswer();
  AddInDll().UnregisterServer();
}
