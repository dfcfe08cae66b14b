/// @file Runs of a scenario in which one call fails, one after another.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "call_failures.h"
#include "holdings.h"
#include "scenarios.h"
#include "stage.h"
#include "swept_call.h"

/// Repeats one scenario, each time with another failing call.
///
/// After each such run it checks: the host got an HRESULT; what did not happen was logged or shown, or the
/// host was told; no file is lost. Then it repeats the scenario without a failure: it has the same effects as
/// the first time, and nothing is held that was not held before.
class Sweep {
 public:
  explicit Sweep(const Scenario& scenario);
  Sweep(const Sweep&) = delete;
  Sweep& operator=(const Sweep&) = delete;
  ~Sweep();

  /// Every call of the host, in each way in which one fails.
  void FailHostCalls();
  /// Every call of the system.
  void FailSystemCalls();
  /// Every allocation of memory.
  void FailAllocations();

  /// The functions that the DLL imports.
  std::vector<std::string> Functions() const { return m_stage.Imports().Functions(); }
  /// How often each function was called in a good run.
  const std::map<std::string, int>& CallsOfImports() const { return m_calls; }
  /// The methods of the host that were called in a good run, in their order.
  const Texts& CallsOfHost() const { return m_hostCalls; }

 private:
  void FailImports(std::span<const CallFailure> failures);
  void RunWell();
  void PrintCount(const char* what) const;
  void Fail(const SweptCall& call);
  void RunFailing(const SweptCall& call);
  void CheckOutcome(const SweptCall& call, HRESULT result);
  Texts NewBoxes() const;
  void CheckPrescribed(const SweptCall& call, HRESULT result) const;
  void CheckGoodRun(const SweptCall& call);
  void CheckLeaks(const SweptCall& call);
  std::vector<Held> Leaks(const Holdings& before, const Holdings& now, const SweptCall& call) const;
  Holdings Settled(const SweptCall& call);

  const Scenario m_scenario;
  Stage m_stage;
  TaskMemorySpy m_spy;
  // Of a good run:
  Texts m_effects;
  Texts m_boxes;
  Texts m_errors;
  std::map<std::string, int> m_calls;
  Texts m_hostCalls;
  Holdings m_holdings;  ///< after a good run
  int m_count = 0;
  int m_fatal = 0;   ///< calls whose failure ends the process
  int m_missed = 0;  ///< calls that did not come again
};
