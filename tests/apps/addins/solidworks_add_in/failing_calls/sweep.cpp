#include "sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "CStringHelper.h"
#include "expectations.h"
#include "list_difference.h"
#include "run_tests.h"

namespace {

constexpr int kMostFailures = 30;

// A call that waits for the PLM client comes in most runs only.
constexpr int kMostAttempts = 4;

std::string Utf8(std::wstring_view text) { return CStringHelper::UnicodeToUTF8(text); }

std::string Lines(const Texts& texts) {
  std::string lines;
  for (const std::wstring& text : texts) lines += "    " + Utf8(text) + "\n";
  return lines;
}

}  // namespace

Sweep::Sweep(const Scenario& scenario) : m_scenario(scenario) {
  SetRunningStep("the first good runs");
  RunWell();  // what is made once for the process is made now
  RunWell();
  m_effects = m_stage.Effects();
  m_boxes = m_stage.Boxes();
  m_errors = m_stage.ErrorLines();
  for (const std::wstring& effect : m_scenario.effects) {
    EXPECT_NE(std::ranges::count(m_effects, effect), 0) << Utf8(effect) << "\n" << Lines(m_effects);
  }
  for (const std::string& function : m_stage.Imports().Functions()) {
    if (const int calls = m_stage.Imports().CallsOf(function)) m_calls[function] = calls;
  }
  for (const auto& call : m_stage.GetHost().GetJournal().Calls()) m_hostCalls.push_back(call.method);
  m_scenario.prepare(m_stage);
  m_holdings = CountHoldings(m_stage, m_spy);
}

Sweep::~Sweep() { SetRunningStep(""); }

void Sweep::RunWell() {
  m_scenario.prepare(m_stage);
  m_stage.ForgetEffects();
  m_stage.Imports().Open();
  const HRESULT result = m_scenario.run(m_stage);
  m_stage.Imports().Close();
  EXPECT_EQ(result, m_scenario.result) << "the good run; log:\n" << Lines(m_stage.LogLines());
}

void Sweep::FailHostCalls() {
  struct Way {
    const char* name;
    HRESULT result;
  };
  constexpr Way kWays[] = {{"failing", E_FAIL},
                           {"returning nothing", S_OK},
                           {"returning S_FALSE", S_FALSE},
                           {"without memory", E_OUTOFMEMORY}};
  std::map<std::wstring, int> seen;
  for (const std::wstring& method : m_hostCalls) {
    const int nth = ++seen[method];
    for (const Way& way : kWays) {
      Fail({"call " + std::to_string(nth) + " of " + Utf8(method) + " " + way.name,
            [&] { m_stage.GetHost().GetFaults().Fail(method, nth, way.result); },
            [&] { return m_stage.GetHost().GetFaults().Unused().empty(); }});
    }
  }
  PrintCount("failing calls of the host");
}

void Sweep::FailSystemCalls() {
  FailImports(SystemFailures());
  PrintCount("failing calls of the system");
}

void Sweep::FailAllocations() {
  if (m_scenario.sweeps_memory) FailImports(MemoryFailures());
  PrintCount("failing allocations");
}

void Sweep::FailImports(std::span<const CallFailure> failures) {
  for (const CallFailure& failure : failures) {
    const auto called = m_calls.find(failure.function);
    if (called == m_calls.end()) continue;
    for (int nth = 1; nth <= called->second; ++nth) {
      Fail({"call " + std::to_string(nth) + " of " + failure.function,
            [&] { m_stage.Imports().Open(failure.function, nth, failure.failing); },
            [&] { return m_stage.Imports().HasFailed(); }});
    }
  }
}

void Sweep::PrintCount(const char* what) const {
  std::cout << m_scenario.name << ": " << m_count << " " << what;
  if (m_missed > 0) std::cout << ", of which " << m_missed << " did not come again";
  std::cout << "\n";
}

void Sweep::Fail(const SweptCall& call) {
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  if (test->result()->total_part_count() > kMostFailures) return;  // enough to look at
  ++m_count;
  SetRunningStep(call.name);
  RunFailing(call);
  if (m_count % m_scenario.runs_per_check == 0) CheckGoodRun(call);
}

void Sweep::RunFailing(const SweptCall& call) {
  bool has_failed = false;
  for (int attempt = 0; attempt < kMostAttempts && !has_failed; ++attempt) {
    m_scenario.prepare(m_stage);
    m_stage.ForgetEffects();
    call.arm();
    const HRESULT result = m_scenario.run(m_stage);
    m_stage.Imports().Close();
    has_failed = call.has_failed();
    m_stage.GetHost().GetFaults().Clear();
    if (has_failed) CheckOutcome(call, result);
  }
  if (!has_failed) ++m_missed;
}

void Sweep::CheckOutcome(const SweptCall& call, HRESULT result) {
  const Texts lost = m_stage.LostFiles();
  EXPECT_TRUE(lost.empty()) << m_scenario.name << ": " << call.name << " lost files:\n" << Lines(lost);
  CheckPrescribed(call, result);
  const bool is_shown = std::ranges::any_of(
      m_stage.Boxes(), [this](const std::wstring& box) { return std::ranges::count(m_boxes, box) == 0; });
  if (result != m_scenario.result || is_shown || m_stage.ErrorLines() != m_errors) return;
  const Texts effects = m_stage.Effects();
  if (effects == m_effects || IsSilenceAccepted(m_scenario.name, call.name)) return;
  ADD_FAILURE() << m_scenario.name << ": " << call.name << " is told nowhere; effects:\n" << Lines(effects);
}

void Sweep::CheckPrescribed(const SweptCall& call, HRESULT result) const {
  for (const Prescribed& prescribed : PrescribedOutcomes()) {
    if (prescribed.scenario != m_scenario.name || prescribed.call != call.name) continue;
    EXPECT_EQ(result, prescribed.result) << m_scenario.name << ": " << call.name;
    const Texts lines = m_stage.ErrorLines();
    EXPECT_TRUE(std::ranges::any_of(
        lines, [&](const std::wstring& line) { return line.find(prescribed.logged) != std::wstring::npos; }))
        << m_scenario.name << ": " << call.name << " is not logged as prescribed:\n"
        << Lines(lines);
  }
}

void Sweep::CheckGoodRun(const SweptCall& call) {
  RunWell();
  m_stage.ForgetLateRequests();
  const Texts effects = m_stage.Effects();
  if (effects != m_effects) {
    ADD_FAILURE() << m_scenario.name << ": after " << call.name << " a good run has other effects:\n"
                  << Lines(effects);
  }
  CheckLeaks(call);
}

void Sweep::CheckLeaks(const SweptCall& call) {
  Holdings now = Settled();
  if (now.MoreThan(m_holdings).empty()) return;
  // Once more, because something may have been made that stays for the life of the process.
  const Holdings before = now;
  m_stage.Blocks().RememberPlaces();
  const std::size_t mark = m_stage.Blocks().Mark();
  RunFailing(call);
  RunWell();
  now = Settled();
  m_holdings = now;
  for (const Held held : now.MoreThan(before)) {
    if (IsLeakAccepted(held, m_scenario.name, call.name)) continue;
    ADD_FAILURE() << m_scenario.name << ": " << call.name << " leaks " << now.Of(held) - before.Of(held)
                  << " " << NameOf(held) << "; blocks since, and the offsets in the DLL that led to them:\n"
                  << m_stage.Blocks().Since(mark);
  }
}

/// What is held now, when it is not more than before or stays so: the PLM client ends connections on threads
/// of its own, and the add-in may keep one a while longer.
Holdings Sweep::Settled() {
  constexpr int kRuns = 4;
  constexpr int kTries = 10;
  Holdings now;
  for (int run = 0; run < kRuns; ++run) {
    if (run > 0) RunWell();
    m_scenario.prepare(m_stage);
    for (int tried = 0; tried < kTries; ++tried) {
      now = CountHoldings(m_stage, m_spy);
      if (now.MoreThan(m_holdings).empty()) return now;
      Sleep(5);
    }
  }
  return now;
}
