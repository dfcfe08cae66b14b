/// @file How long a thread of the host serves nobody, and how busy it is.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "host_object.h"
#include "host_thread.h"

/// The longest times in which this thread did not do something.
struct Absence {
  double calls;   ///< milliseconds between two COM calls from another apartment
  double paints;  ///< milliseconds between two paints of its window
};

/// Measures the thread that creates it, which must be in a single-threaded apartment. Other threads call an
/// object of it and let its window repaint, again and again, for the life of the object.
class ServiceMeter {
 public:
  ServiceMeter();
  ServiceMeter(const ServiceMeter&) = delete;
  ServiceMeter& operator=(const ServiceMeter&) = delete;
  ~ServiceMeter();

  /// Begins to measure: the thread is at work from now on, until Stop.
  void Start();
  Absence Stop();

  int Calls() const { return m_calls.count; }
  int Paints() const { return m_paints.count; }

 private:
  using Clock = std::chrono::steady_clock;

  /// When the thread served last, and its longest absence since Start.
  struct Service {
    void Start();
    void Served();

    Clock::time_point last;
    Clock::duration longest{};
    int count = 0;
  };

  static void ServeOtherwise();
  void CallAgainAndAgain(const std::stop_token& stop, IStream* marshalled);
  void PaintAgainAndAgain(const std::stop_token& stop) const;

  HostObject m_object;
  HostWindow m_window;
  Service m_calls, m_paints;
  std::atomic<bool> m_callerEnded = false;
  std::jthread m_caller, m_painter;
};

/// The processor time that this thread has taken so far, in milliseconds.
double ProcessorTime();
