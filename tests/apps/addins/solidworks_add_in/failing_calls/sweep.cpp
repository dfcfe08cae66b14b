#include "sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "CStringHelper.h"
#include "base/hex_code.h"
#include "list_difference.h"
#include "run_tests.h"

namespace {

constexpr int kMostFailures = 12;

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
  EXPECT_EQ(result, S_OK) << "the good run; log:\n" << Lines(m_stage.LogLines());
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
  std::cout << m_scenario.name << ": " << m_hostCalls.size() << " calls of the host, " << m_count
            << " failures\n";
}

void Sweep::FailImports(std::span<const CallFailure> failures, bool memory) {
  m_isMemory = memory;
  for (const CallFailure& failure : failures) {
    const auto called = m_calls.find(failure.function);
    if (called == m_calls.end()) continue;
    for (int nth = 1; nth <= called->second; ++nth) {
      Fail({"call " + std::to_string(nth) + " of " + failure.function,
            [&] { m_stage.Imports().Open(failure.function, nth, failure.failing); },
            [&] { return m_stage.Imports().HasFailed(); }});
    }
  }
  std::cout << m_scenario.name << ": " << m_count << (memory ? " allocations\n" : " calls of the system\n");
}

void Sweep::Fail(const SweptCall& call) {
  if (testing::Test::HasFatalFailure() ||
      testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count() > kMostFailures) {
    return;
  }
  ++m_count;
  SetRunningStep(call.name);
  RunFailing(call);
  CheckGoodRun(call);
}

void Sweep::RunFailing(const SweptCall& call) {
  m_scenario.prepare(m_stage);
  m_stage.ForgetEffects();
  const Texts held = m_stage.HeldReferences();
  call.arm();
  const HRESULT result = m_scenario.run(m_stage);
  m_stage.Imports().Close();
  const bool has_failed = call.has_failed();
  m_stage.GetHost().GetFaults().Clear();
  EXPECT_TRUE(has_failed || m_isMemory) << call.name << " did not come";
  if (has_failed) CheckOutcome(call, result);
}

void Sweep::CheckOutcome(const SweptCall& call, HRESULT result) {
  const Texts lost = m_stage.LostFiles();
  EXPECT_TRUE(lost.empty()) << call.name << " lost files:\n" << Lines(lost);
  const bool is_told = FAILED(result) || !m_stage.LogLines().empty() || !m_stage.Boxes().empty();
  if (is_told || m_isMemory) return;
  const Texts effects = m_stage.Effects();
  if (effects == m_effects) return;
  ADD_FAILURE() << m_scenario.name << ": " << call.name << " is told nowhere; effects:\n" << Lines(effects);
}

void Sweep::CheckGoodRun(const SweptCall& call) {
  RunWell();
  const Texts effects = m_stage.Effects();
  if (effects != m_effects) {
    ADD_FAILURE() << m_scenario.name << ": after " << call.name << " a good run has other effects:\n"
                  << Lines(effects);
  }
  const std::string first = Leaks();
  if (first.empty()) return;
  // Once more, because something may have been made that stays for the life of the process.
  m_stage.Blocks().RememberPlaces();
  const std::size_t mark = m_stage.Blocks().Mark();
  RunFailing(call);
  RunWell();
  const std::string second = Leaks();
  if (second.empty()) return;
  ADD_FAILURE() << m_scenario.name << ": " << call.name << " leaks " << second << "\n"
                << m_stage.Blocks().Since(mark);
}

/// What is held more than after the last good run, in words.
std::string Sweep::Leaks() {
  m_scenario.prepare(m_stage);
  constexpr int kTries = 20;  // the PLM client's threads may still end their connections
  Holdings now;
  for (int attempt = 0; attempt < kTries; ++attempt) {
    now = CountHoldings(m_stage, m_spy);
    if (now.MoreThan(m_holdings).empty()) break;
    Sleep(10);
  }
  return now.MoreThan(std::exchange(m_holdings, now));
}
