/// @file Counting the calls of Wine's server, which are most of what a call of the system costs there.
#pragma once

#include "unix_process.h"

/// Counts the calls that the main thread makes, from the construction of the object on. A thread asks the
/// server by one write to a pipe, and the system counts its writes: the program must not write anything else
/// meanwhile.
class ServerCalls {
 public:
  /// @throws std::runtime_error if the system does not count.
  ServerCalls() {
    const long long first = Writes();
    m_start = Writes();
    m_ofCounting = m_start - first;
  }

  long long Count() const { return Writes() - m_start - m_ofCounting; }

 private:
  static long long Writes() { return UnixCount("task\\" + UnixProcess() + "\\io", "syscw"); }

  long long m_start = 0;
  long long m_ofCounting = 0;
};
