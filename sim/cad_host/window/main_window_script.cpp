// The main window from its start to its end: connecting add-ins, playing a script, leaving.
#include <windows.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "CStringHelper.h"
#include "console/exception_text.h"
#include "main_window.h"
#include "resource_ids.h"

namespace cad_host {
namespace {

constexpr UINT_PTR kScriptTimer = 1;
constexpr UINT kRetryMs = 50;  // while an action runs

}  // namespace

int MainWindow::ExitCode() const {
  constexpr int kExpectationsFailed = 1;
  constexpr int kFailed = 2;
  if (m_scriptFailed) return kFailed;
  return m_desk.actions.FailedExpectations() > 0 ? kExpectationsFailed : 0;
}

void MainWindow::Start() {
  m_isPlaying = !m_options.script.empty();
  if (!m_options.record.empty()) m_desk.actions.StartRecording(m_options.record);
  ConnectAtStart();
  if (!m_options.script.empty()) PlayScript(m_options.script);
}

void MainWindow::ConnectAtStart() {
  if (!m_options.connect.empty()) {
    m_desk.actions.Do({L"connect", m_options.connect});
  } else if (m_options.script.empty()) {
    for (const AddInEntry& add_in : Host::RegisteredAddIns()) {
      if (add_in.loads_at_start) m_desk.actions.Do({L"connect", add_in.title});
    }
  }
}

void MainWindow::PlayScript(const std::wstring& path) {
  m_isPlaying = true;
  m_player.Load(path);
  SetTimer(Handle(), kScriptTimer, USER_TIMER_MINIMUM, nullptr);
}

void MainWindow::PlayLine() {
  KillTimer(Handle(), kScriptTimer);
  if (!m_isPlaying) return;
  if (!m_player.HasNext()) return EndScript();
  if (m_desk.actions.IsBusy()) {
    SetTimer(Handle(), kScriptTimer, kRetryMs, nullptr);
    return;
  }
  OnIdle();  // a script without pauses leaves no idle time, but its user, too, sees what is enabled
  ShowStatus(m_player.NextLine());
  UpdateWindow(Handle());
  m_player.Step();
  SetTimer(Handle(), kScriptTimer, std::max<UINT>(m_options.step_ms, USER_TIMER_MINIMUM), nullptr);
}

void MainWindow::EndScript() {
  m_isPlaying = false;
  if (!m_options.script.empty() && !m_options.stay) return Close();
  const int failed = m_desk.actions.FailedExpectations();
  ShowStatus(failed == 0 ? m_desk.texts(IDS_SCRIPT_ENDED)
                         : m_desk.texts(IDS_SCRIPT_FAILED, std::to_wstring(failed)));
}

// A script that nobody watches must not wait for a person.
void MainWindow::OnError(const std::wstring& text) {
  const bool was_playing = std::exchange(m_isPlaying, false);
  if (was_playing) {
    m_scriptFailed = true;
    std::cerr << "cad_host_window: " << CStringHelper::UnicodeToUTF8(text) << "\n";
    if (!m_options.stay) return Close();
  }
  Window::OnError(text);
}

void MainWindow::Close() {
  m_isPlaying = false;
  try {
    m_desk.actions.End();
  } catch (...) {
    std::cerr << "cad_host_window: " << CStringHelper::UnicodeToUTF8(TextOfException()) << "\n";
    m_scriptFailed = true;
  }
  DestroyWindow(Handle());
}

}  // namespace cad_host
