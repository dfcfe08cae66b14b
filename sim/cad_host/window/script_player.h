/// @file Plays a session script line by line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "actions.h"
#include "console/script.h"

namespace cad_host {

class ScriptPlayer {
 public:
  explicit ScriptPlayer(Actions& actions) : m_actions(actions) {}

  /// Begins with the first line of the file.
  /// @throws HostError naming the file if it cannot be read, or the line if a quote does not end.
  void Load(const std::wstring& path);

  /// Whether there is another line.
  bool HasNext() const { return m_next < m_script.size(); }

  /// The line that runs next, as it stands in the file. Must not be called without another line.
  const std::wstring& NextLine() const { return m_script[m_next].Text(); }

  /// Runs the next line.
  /// @return false if it has to wait, because another action runs.
  /// @throws HostError naming the file and the line if it fails. Then the script is at its end.
  bool Step();

 private:
  Actions& m_actions;
  std::vector<Command> m_script;
  std::size_t m_next = 0;
};

}  // namespace cad_host
