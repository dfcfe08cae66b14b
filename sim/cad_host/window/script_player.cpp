#include "script_player.h"

namespace cad_host {

void ScriptPlayer::Load(const std::wstring& path) {
  m_script = ReadScript(path);
  m_next = 0;
}

bool ScriptPlayer::Step() {
  if (m_actions.IsBusy()) return false;
  try {
    m_actions.Run(m_script[m_next++]);
  } catch (...) {
    m_next = m_script.size();
    throw;
  }
  return true;
}

}  // namespace cad_host
