#include "soak.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

#include "CStringHelper.h"
#include "base/hex_code.h"
#include "killer.h"
#include "result_codes.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRows = 10;

std::string Utf8(std::wstring_view text) { return CStringHelper::UnicodeToUTF8(text); }

std::string Cells(long long done, long long seconds) {
  char cells[40];
  std::snprintf(cells, sizeof cells, "%9lld %8lld", done, seconds);
  return cells;
}

}  // namespace

Soak::Soak(unsigned seed, std::function<void(const std::string& line)> print)
    : m_print(std::move(print)), m_random(seed) {
  MakeModels(m_scene);
  m_print("seed " + std::to_string(seed));
}

unsigned Soak::Random(int end) {
  return std::uniform_int_distribution(0U, static_cast<unsigned>(end) - 1)(m_random);
}

void Soak::RunCommands(int count) {
  RunPart("mixed commands", count, [this] { RunWell(Draw()); });
}

void Soak::RunWithKilledClient(int count) {
  constexpr int kTurnsPerKill = 4;
  RunPart("commands with the PLM client killed", count, [this] {
    if (Random(kTurnsPerKill) == 0) KillAndRestart();
    RunWell(Draw());
  });
  m_print("killed " + std::to_string(m_kills) + " times; " + std::to_string(m_withoutEffect) +
          " of the commands then had no effect, or not their whole one, and said so");
}

void Soak::KillAndRestart() {
  RunWhileKilled(Draw());
  for (unsigned more = Random(3); more > 0; --more) RunWithoutClient();
  m_scene.Client().Start();
}

void Soak::RunConnections(int count) {
  RunPart("connections", count, [this] {
    Reconnect();
    if (Random(2) == 0) RunWell(Draw());
  });
}

void Soak::RunPart(const std::string& title, int count, const std::function<void()>& step) {
  Reconnect();
  DoEverything();
  const Clock::time_point begin = Clock::now();
  Amounts first = MeasureAtRest();
  Amounts last = first;
  m_print(title);
  m_print("     done  seconds" + HeadOf(first));
  m_print(Cells(0, 0) + RowOf(first));
  const int rows = std::min(count, kRows);
  for (int row = 1, done = 0; row <= rows && !HasManyFaults(); ++row) {
    for (const int end = static_cast<int>(1LL * count * row / rows); done < end && !HasManyFaults(); ++done)
      step();
    last = MeasureAtRest();
    m_print(Cells(done, std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - begin).count()) +
            RowOf(last));
    if (row == 1) first = last;
  }
  const std::string growth = Growth(first, last);
  if (!growth.empty()) Fault(title + " are not flat: " + growth);
}

void Soak::DoEverything() {
  for (const Action& action : m_actions) RunWell(action);
}

Amounts Soak::MeasureAtRest() {
  DoEverything();  // what is made at its first use after a connection is there now
  m_scene.CloseDocuments();
  m_scene.LogIn();
  m_scene.Forget();
  return Measure(m_scene, m_spy);
}

void Soak::RunWell(const Action& action) {
  const Turn turn{m_scene, ++m_number};
  action.prepare(turn);
  m_scene.Forget();
  const long long log = m_scene.LogSize();
  const HRESULT result = action.run(turn);
  const std::string name = "action " + std::to_string(m_number) + ", " + action.name;
  if (result != S_OK) Fault(name + ": result " + Utf8(HexCode(result)));
  if (!action.is_done(turn)) Fault(name + ": no effect");
  if (!action.keeps_files(turn)) Fault(name + ": lost a file");
  if (m_scene.Boxes() != action.boxes) {
    Fault(name + ": " + std::to_string(m_scene.Boxes().size()) + " boxes");
    for (const std::wstring& box : m_scene.Boxes()) m_print("    " + Utf8(box));
  }
  CheckLog(name, action.logged, log);
  m_afterEach(m_scene);
}

void Soak::CheckLog(const std::string& name, const std::string& expected, long long before) {
  if (m_scene.LogSize() == before && expected.empty()) return;
  const std::string logged = m_scene.LogFrom(before);
  const bool is_one_line = std::ranges::count(logged, '\n') == 1;
  if (expected.empty() || !is_one_line || logged.find(expected) == std::string::npos) {
    Fault(name + ": logged " + logged);
  }
}

void Soak::RunWhileKilled(const Action& action) {
  constexpr int kLatest = 3'000;  // microseconds; many answers have come by then
  const Turn turn{m_scene, ++m_number};
  action.prepare(turn);
  m_scene.Forget();
  const long long log = m_scene.LogSize();
  HRESULT result = S_OK;
  {
    const Killer killer(m_scene.Client().Id(), std::chrono::microseconds(Random(kLatest)));
    killer.Strike();
    result = action.run(turn);
  }
  m_scene.Client().Kill();
  const std::string name = "action " + std::to_string(m_number) + ", " + action.name + ", client killed";
  if (result != S_OK && result != E_FAIL && result != hr::kNoAnswer) {
    Fault(name + ": result " + Utf8(HexCode(result)));
  }
  const bool is_told = !m_scene.Boxes().empty() || m_scene.LogSize() != log;
  const bool is_done = action.is_done(turn);
  if (!is_done && !is_told) Fault(name + ": no effect, and nothing told");
  ++m_kills;
  if (!is_done) ++m_withoutEffect;
  if (!action.keeps_files(turn)) Fault(name + ": lost a file");
}

void Soak::RunWithoutClient() {
  m_scene.Forget();
  m_scene.Pick(m_scene.IsLoggedIn() ? L"PlmWf" : L"PlmLogin");
  if (m_scene.Boxes().size() != 1) {
    Fault("without a client: " + std::to_string(m_scene.Boxes().size()) + " boxes");
  }
}

void Soak::Reconnect() {
  m_scene.CloseDocuments();
  if (!m_scene.Disconnect()) Fault("not disconnected");
  m_scene.Connect();
}

void Soak::Fault(const std::string& text) {
  m_print("WRONG: " + text);
  m_faults.push_back(text);
}
