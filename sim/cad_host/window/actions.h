/// @file What a person does at the host, as lines of a session script.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "cad_host/host.h"
#include "console/session.h"
#include "recorder.h"

namespace cad_host {

/// Menus, mouse, keys and scripts all act through this one class: an action is a line of a session script, so
/// that what the window does can be recorded and played again.
class Actions {
 public:
  /// @param transcript gets what the console program would write.
  Actions(Host& host, std::ostream& transcript);

  /// Runs the command that consists of `words`.
  /// @return false if nothing was done because another action runs; its message box is open, for example.
  /// @throws HostError with the reason if the command fails.
  bool Do(const std::vector<std::wstring>& words);

  /// Runs the command `verb` with a rest that is not split into words; otherwise like the above.
  bool DoRest(const std::wstring& verb, const std::wstring& rest);

  /// Runs a line of a script file; otherwise like the above.
  /// @throws HostError naming the file and the line if the command fails.
  bool Run(Command& command);

  /// Whether an action runs. Nothing else may call an add-in then.
  bool IsBusy() const { return m_busy; }

  /// From now on, calls `action` after each action, also one that has failed.
  void OnDone(std::function<void()> action) { m_onDone = std::move(action); }

  /// From now on, message boxes that a script answers stay for `milliseconds`, and `take_picture` gets the
  /// names of the pictures that it wants.
  void Present(unsigned milliseconds, std::function<void(const std::wstring& name)> take_picture);

  /// Ends the session; see Session::End.
  void End();

  int FailedExpectations() const { return m_session.FailedExpectations(); }

  void StartRecording(const std::wstring& path) { m_recorder.Start(path, m_host); }
  void StopRecording() { m_recorder.Stop(); }
  bool IsRecording() const { return m_recorder.IsRecording(); }

 private:
  bool DoLine(const std::wstring& line);

  Host& m_host;
  Session m_session;
  Recorder m_recorder;
  std::function<void()> m_onDone = [] {};
  bool m_busy = false;
};

}  // namespace cad_host
