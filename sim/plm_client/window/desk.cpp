#include "desk.h"

#include <algorithm>

#include "CStringHelper.h"
#include "models/model_properties.h"
#include "panels/json_for_people.h"
#include "panels/make_panel.h"
#include "resource_ids.h"

namespace plm_window {

Desk::Desk(const Options& options, const window::Texts& texts, std::function<void()> notify)
    : m_options(options),
      m_texts(texts),
      m_vault(plm_vault::Vault::Open(options.vault)),
      m_pictures(options.pictures),
      m_notify(std::move(notify)),
      m_queue(m_notify) {
  if (!options.person.empty()) m_person = plm_panels::PersonScript::Read(options.person);
  if (!options.answers.empty()) m_answers.emplace(options.answers);
  if (options.misbehave) m_misbehaviour.Choose(*options.misbehave, true);
  m_client = std::make_unique<plm_client::Client>(
      plm_client::Settings{.pipe = options.pipe},
      [this](const plm_client::Request& request, const std::stop_token& stop) {
        return Handle(request, stop);
      });
  m_started.set_value(m_client.get());
}

// Before the panels: the threads of the connections may wait for them.
Desk::~Desk() { m_client.reset(); }

/// On a thread of a connection.
plm_client::Reply Desk::Handle(const plm_client::Request& request, const std::stop_token& stop) {
  const std::shared_future<const plm_client::Client*> served = m_served;  // each thread needs one of its own
  const plm_client::Client* const client = served.get();
  return m_queue.Ask(request, stop, [&] { return client->HostIsThere(request.connection); });
}

void Desk::OnNews() {
  CloseFinished();
  for (const std::shared_ptr<Call>& call : m_queue.TakeNew()) Begin(call);
}

void Desk::Begin(const std::shared_ptr<Call>& call) {
  m_log.push_back({.time = TimeOfDay(),
                   .command = CStringHelper::UTF8ToUnicode(call->Request().command),
                   .user = m_session.user,
                   .answer = m_texts(IDS_LOG_WAITS)});
  try {
    if (!AnswerFromFolder(*call)) ShowPanel(call);
  } catch (const std::exception& failure) {  // the host shall not wait for a panel that never comes
    m_log.back().answer = CStringHelper::UTF8ToUnicode(failure.what());
    call->Answer(plm_client::Reply::Error(-32000, failure.what()));
  }
}

/// @return whether the folder has an answer.
bool Desk::AnswerFromFolder(Call& call) {
  if (!m_answers) return false;
  const plm_client::FiledAnswer answer = m_answers->Next(call.Request().command, call.Request().connection);
  if (answer.file.empty()) return false;
  m_log.back().answer = OnOneLine(CStringHelper::UTF8ToUnicode(answer.file + ": " + answer.text));
  call.Answer(ReplyWith(m_misbehaviour.Take(), answer.text));
  return true;
}

std::wstring Desk::DefaultUser() const {
  if (!m_options.user.empty()) return m_options.user;
  const std::vector<plm_vault::User> users = m_vault.Users();
  return users.empty() ? std::wstring() : users.front().name;
}

void Desk::ShowPanel(const std::shared_ptr<Call>& call) {
  const plm_client::Request& request = call->Request();
  auto panel = plm_panels::MakePanel(request.command, request.text,
                                     {.vault = m_vault,
                                      .session = m_session,
                                      .text = [this](unsigned id) { return m_texts(id); },
                                      .read_properties = &plm_models::ReadModelProperties,
                                      .user = DefaultUser()});
  const std::wstring user = panel->User();
  m_log.back().user = user;
  m_open.push_back(std::make_unique<OpenPanel>(OpenPanel{call, nullptr, m_log.size() - 1}));
  OpenPanel& open = *m_open.back();
  open.window = std::make_unique<PanelWindow>(
      std::move(panel), m_texts,
      PanelWindowSettings{.command = request.command,
                          .request = plm_panels::ForReading(request.text),
                          .user = user,
                          .refuses_faults = [this] { return !m_sendsFaulty; },
                          .answer = [this, &open](const std::wstring& answer) { Answer(open, answer); },
                          .take_picture = [this](const std::wstring& name) { m_pictures.Take(name); },
                          .layout_file = m_options.layout_file});
  open.window->Present();
  if (const auto line = m_person.Next(request.command)) open.window->Play(*line, m_options.step);
}

void Desk::Answer(OpenPanel& panel, const std::wstring& answer) {
  m_log[panel.log_entry].answer = answer.empty() ? m_texts(IDS_LOG_NO_ANSWER) : OnOneLine(answer);
  panel.is_answered = true;
  panel.call->Answer(ReplyWith(m_misbehaviour.Take(), CStringHelper::UnicodeToUTF8(answer)));
  m_notify();
}

void Desk::CloseFinished() {
  for (const auto& panel : m_open) {
    if (!panel->is_answered && panel->call->HasEnded()) {
      panel->is_answered = true;
      m_log[panel->log_entry].answer = m_texts(IDS_LOG_HOST_GONE);
    }
  }
  // A panel that shows a dialog of its own is disabled, and its code still runs: it goes when the dialog has
  // gone.
  std::erase_if(m_open, [](const auto& panel) {
    return panel->is_answered && (!panel->window || IsWindowEnabled(panel->window->Handle()));
  });
}

}  // namespace plm_window
