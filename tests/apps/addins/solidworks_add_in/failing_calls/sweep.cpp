#include "sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <iostream>

#include "CStringHelper.h"
#include "expectations.h"
#include "list_difference.h"
#include "run_tests.h"

namespace {

constexpr int kMostFailures = 30;

// A call that waits for the PLM client comes in most runs only.
constexpr int kMostAttempts = 4;

constexpr int kLeakRounds = 3;

std::string Utf8(std::wstring_view text) { return CStringHelper::UnicodeToUTF8(text); }

std::string Lines(const Texts& texts) {
  std::string lines;
  for (const std::wstring& text : texts) lines += "    " + Utf8(text) + "\n";
  return lines;
}

/// Whether one of `texts` contains `part`. If `part` is empty: whether there are none.
bool IsWithin(const Texts& texts, std::wstring_view part) {
  if (part.empty()) return texts.empty();
  return std::ranges::any_of(texts,
                             [&](const std::wstring& text) { return text.find(part) != std::wstring::npos; });
}

/// A prescribed text with the code of `call` in it.
std::wstring WithCode(std::wstring_view text, const SweptCall& call) {
  std::wstring filled(text);
  const std::size_t place = filled.find(L"{}");
  if (place == std::wstring::npos || !call.code) return filled;
  std::array<wchar_t, 9> digits{};
  std::swprintf(digits.data(), digits.size(), L"%lx", static_cast<unsigned long>(*call.code));
  return filled.replace(place, 2, digits.data());
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
      Fail({"call " + std::to_string(nth) + " of " + Utf8(method) + " " + way.name, way.result,
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
  FailImports(MemoryFailures());
  PrintCount("failing allocations");
}

void Sweep::FailImports(std::span<const CallFailure> failures) {
  for (const CallFailure& failure : failures) {
    const auto called = m_calls.find(failure.function);
    if (called == m_calls.end()) continue;
    for (int nth = 1; nth <= called->second; ++nth) {
      Fail({"call " + std::to_string(nth) + " of " + failure.function, std::nullopt,
            [&] { m_stage.Imports().Open(failure.function, nth, failure.failing); },
            [&] { return m_stage.Imports().HasFailed(); }});
    }
  }
}

void Sweep::PrintCount(const char* what) const {
  std::cout << m_scenario.name << ": " << m_count << " " << what;
  if (m_missed > 0) std::cout << ", of which " << m_missed << " did not come again";
  if (m_fatal > 0) std::cout << "; " << m_fatal << " are left out, because they end the process";
  std::cout << "\n";
}

void Sweep::Fail(const SweptCall& call) {
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  if (test->result()->total_part_count() > kMostFailures) return;  // enough to look at
  if (IsFatal(m_scenario.name, call.name)) {
    ++m_fatal;
    return;
  }
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
  if (result != m_scenario.result || !NewBoxes().empty() || m_stage.ErrorLines() != m_errors) return;
  if (FAILED(m_scenario.result) && !m_errors.empty()) return;  // told as in a good run, which fails as well
  const Texts effects = m_stage.Effects();
  if (effects == m_effects || IsSilenceAccepted(m_scenario.name, call.name)) return;
  ADD_FAILURE() << m_scenario.name << ": " << call.name << " is told nowhere; effects:\n" << Lines(effects);
}

/// The boxes that a good run does not show.
Texts Sweep::NewBoxes() const {
  Texts boxes = m_stage.Boxes();
  std::erase_if(boxes, [this](const std::wstring& box) { return std::ranges::count(m_boxes, box) != 0; });
  return boxes;
}

void Sweep::CheckPrescribed(const SweptCall& call, HRESULT result) const {
  for (const Prescribed& prescribed : PrescribedOutcomes()) {
    if (!IsAbout(prescribed, m_scenario.name, call)) continue;
    const std::string name = std::string(m_scenario.name) + ": " + call.name;
    EXPECT_EQ(result, prescribed.result == kItsCode ? *call.code : prescribed.result) << name;
    EXPECT_TRUE(IsWithin(m_stage.ErrorLines(), WithCode(prescribed.logged, call)))
        << name << " is not logged as prescribed:\n"
        << Lines(m_stage.ErrorLines());
    EXPECT_TRUE(IsWithin(NewBoxes(), WithCode(prescribed.shown, call)))
        << name << " is not shown as prescribed:\n"
        << Lines(NewBoxes());
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
  Holdings now = Settled(call);
  std::vector<Held> growing = Leaks(m_holdings, now, call);
  if (growing.empty()) return;
  // Again, because something may have been made that stays for the life of the process, or a connection may
  // be kept that was not before. A leak grows each time.
  m_stage.Blocks().RememberPlaces();
  const std::size_t mark = m_stage.Blocks().Mark();
  for (int round = 0; round < kLeakRounds && !growing.empty(); ++round) {
    m_holdings = now;
    RunFailing(call);
    RunWell();
    now = Settled(call);
    const std::vector<Held> more = Leaks(m_holdings, now, call);
    std::erase_if(growing, [&](Held held) { return std::ranges::count(more, held) == 0; });
  }
  m_holdings = now;
  for (const Held held : growing) {
    ADD_FAILURE() << m_scenario.name << ": " << call.name << " leaks " << NameOf(held)
                  << " each time, of which " << now.Of(held)
                  << " are held now; blocks since, and the offsets in the DLL that led to them:\n"
                  << m_stage.Blocks().Since(mark);
  }
}

/// The kinds of which more is held than `before`, except where that is accepted.
std::vector<Held> Sweep::Leaks(const Holdings& before, const Holdings& now, const SweptCall& call) const {
  std::vector<Held> kinds = now.MoreThan(before);
  std::erase_if(kinds, [&](Held held) { return IsLeakAccepted(held, m_scenario.name, call.name); });
  return kinds;
}

/// What is held now, when it is not more than before or stays so: the PLM client ends connections on threads
/// of its own, and the add-in may keep one a while longer.
Holdings Sweep::Settled(const SweptCall& call) {
  constexpr int kRuns = 4;
  constexpr int kTries = 10;
  Holdings now;
  for (int run = 0; run < kRuns; ++run) {
    if (run > 0) RunWell();
    m_scenario.prepare(m_stage);
    for (int tried = 0; tried < kTries; ++tried) {
      now = CountHoldings(m_stage, m_spy);
      if (Leaks(m_holdings, now, call).empty()) return now;
      Sleep(5);
    }
  }
  return now;
}
