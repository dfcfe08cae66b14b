// Ends a process at a given moment: soak_killer PROCESS MICROSECONDS READY STRUCK, where READY is an event
// that it sets and STRUCK one that it waits for before the microseconds begin.
#include <windows.h>

#include <chrono>
#include <cstdlib>

#include "base/unique_handle.h"

int main(int count, char** arguments) {
  constexpr int kWanted = 5;
  if (count != kWanted) return 2;
  const UniqueHandle victim =
      OwnHandle(OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(std::atol(arguments[1]))));
  const std::chrono::microseconds delay(std::atol(arguments[2]));
  const UniqueHandle ready = OwnHandle(OpenEventA(EVENT_MODIFY_STATE, FALSE, arguments[3]));
  const UniqueHandle struck = OwnHandle(OpenEventA(SYNCHRONIZE, FALSE, arguments[4]));
  if (!victim || !ready || !struck) return 2;
  SetEvent(ready.get());
  WaitForSingleObject(struck.get(), INFINITE);
  using Clock = std::chrono::steady_clock;
  for (const auto end = Clock::now() + delay; Clock::now() < end;) YieldProcessor();
  return TerminateProcess(victim.get(), 1) ? 0 : 2;
}
