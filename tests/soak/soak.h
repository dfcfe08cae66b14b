/// @file A host that works for a long time without a rest: everything it holds stays the same.
#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "actions.h"
#include "amounts.h"

/// Does actions in a random order in one host process. Each part measures after each tenth of its turns, and
/// prints a table of that; nothing may have grown since the first tenth. Before each measurement every action
/// is done once, so that what is made at its first use is there.
class Soak {
 public:
  /// @param seed of the random order.
  /// @param print gets each line of the report.
  Soak(unsigned seed, std::function<void(const std::string& line)> print);

  /// `count` actions, each of which must have its whole effect.
  void RunCommands(int count);

  /// `count` actions. The PLM client is killed at random moments and started again: an action has its effect,
  /// or says that it did not have it, and the next one after the start has its effect.
  void RunWithKilledClient(int count);

  /// Connects and disconnects the add-in `count` times, some of them with an action between.
  void RunConnections(int count);

  /// From now on does this after each action.
  void AfterEach(std::function<void(Scene&)> after) { m_afterEach = std::move(after); }

  /// What was wrong so far: outcomes of actions, and what has grown.
  const std::vector<std::string>& Faults() const { return m_faults; }

 private:
  /// Calls `step` so many times, measures and prints meanwhile.
  void RunPart(const std::string& title, int count, const std::function<void()>& step);
  /// Every action once.
  void DoEverything();
  Amounts MeasureAtRest();

  const Action& Draw() { return m_actions[Random(static_cast<int>(m_actions.size()))]; }
  /// A number from 0 to `end` - 1.
  unsigned Random(int end);

  void RunWell(const Action& action);
  /// What was logged since the log had this size is one line with `expected`, or nothing.
  void CheckLog(const std::string& name, const std::string& expected, long long before);
  void RunWhileKilled(const Action& action);
  void RunWithoutClient();
  void KillAndRestart();
  void Reconnect();
  void Fault(const std::string& text);
  /// Whether there is enough to look at.
  bool HasManyFaults() const { return m_faults.size() >= 20; }

  const std::function<void(const std::string& line)> m_print;
  std::mt19937 m_random;
  Scene m_scene;
  TaskMemorySpy m_spy;
  const std::vector<Action> m_actions = AllActions();
  std::function<void(Scene&)> m_afterEach = [](Scene&) {};
  int m_number = 0;
  int m_kills = 0;
  int m_withoutEffect = 0;
  std::vector<std::string> m_faults;
};
