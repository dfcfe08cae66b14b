/// @file Where the commands of the hosts arrive: each gets a panel, and its answer.
#pragma once

#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "call_queue.h"
#include "command_log.h"
#include "misbehaviour.h"
#include "options.h"
#include "panel_window.h"
#include "panels/panel.h"
#include "panels/person_script.h"
#include "plm_client/answer_folder.h"
#include "plm_client/client.h"
#include "vault/vault.h"
#include "window/picture_taker.h"

namespace plm_window {

/// Serves the pipe and shows a panel for each command. All methods are for the thread of the windows.
class Desk {
 public:
  /// @param notify is called on any thread when OnNews has something to do.
  /// @throws std::runtime_error or plm_vault::VaultError naming the vault, file or pipe that cannot be used.
  Desk(const Options& options, const window::Texts& texts, std::function<void()> notify);
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;
  ~Desk();

  /// Shows panels for new commands; closes those that are answered or whose host is gone.
  void OnNews();

  const std::vector<LogEntry>& Log() const { return m_log; }
  const plm_vault::Vault& Vault() const { return m_vault; }
  const std::wstring& User() const { return m_session.user; }
  const std::wstring& PipePath() const { return m_client->PipePath(); }
  int HostCount() const { return m_client->OpenConnectionCount(); }
  bool HasPanels() const { return !m_open.empty(); }

  Misbehaviour& Faults() { return m_misbehaviour; }
  /// Whether an answer with a fault is sent all the same.
  bool SendsFaulty() const { return m_sendsFaulty; }
  void SendFaulty(bool send) { m_sendsFaulty = send; }

 private:
  struct OpenPanel {
    std::shared_ptr<Call> call;
    std::unique_ptr<PanelWindow> window;
    std::size_t log_entry;
    bool is_answered = false;
  };

  plm_client::Reply Handle(const plm_client::Request& request, const std::stop_token& stop);
  void Begin(const std::shared_ptr<Call>& call);
  bool AnswerFromFolder(Call& call);
  void ShowPanel(const std::shared_ptr<Call>& call);
  void Answer(OpenPanel& panel, const std::wstring& answer);
  void CloseFinished();
  std::wstring DefaultUser() const;

  const Options m_options;
  const window::Texts m_texts;
  plm_vault::Vault m_vault;
  plm_panels::Session m_session;
  plm_panels::PersonScript m_person;
  const window::PictureTaker m_pictures;
  std::optional<plm_client::AnswerFolder> m_answers;
  Misbehaviour m_misbehaviour;
  bool m_sendsFaulty = false;
  std::vector<LogEntry> m_log;
  std::function<void()> m_notify;
  CallQueue m_queue;
  std::vector<std::unique_ptr<OpenPanel>> m_open;
  // The client, for its own threads: a request may come before m_client is set. Not a std::latch: in this
  // library its wait may miss the end.
  std::promise<const plm_client::Client*> m_started;
  std::shared_future<const plm_client::Client*> m_served = m_started.get_future().share();
  std::unique_ptr<plm_client::Client> m_client;
};

}  // namespace plm_window
