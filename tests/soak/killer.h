/// @file A process that ends another one at a given moment.
#pragma once

#include <windows.h>

#include <chrono>

#include "base/unique_handle.h"

/// soak_killer.exe, beside this program. It is a process, because a thread would come and go in the process
/// that is measured.
class Killer {
 public:
  /// Starts it; it waits for Strike. @throws std::runtime_error if it does not start.
  /// @param victim the id of the process that it is going to end.
  /// @param delay how long after Strike.
  Killer(DWORD victim, std::chrono::microseconds delay);
  Killer(const Killer&) = delete;
  Killer& operator=(const Killer&) = delete;
  /// Waits for its end.
  ~Killer();

  /// Begins the delay.
  void Strike() const { SetEvent(m_struck.get()); }

 private:
  UniqueHandle m_ready;
  UniqueHandle m_struck;
  UniqueHandle m_process;
};
