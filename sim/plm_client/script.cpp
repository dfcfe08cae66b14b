#include "plm_client/script.h"

#include <utility>

namespace plm_client {

void Script::Always(const std::string& command, Reply reply) {
  const std::lock_guard lock(m_mutex);
  m_answers[command].always = std::move(reply);
}

void Script::InTurn(const std::string& command, std::vector<Reply> replies) {
  const std::lock_guard lock(m_mutex);
  std::vector<Reply>& next = m_answers[command].next;
  next.insert(next.end(), replies.begin(), replies.end());
}

Reply Script::operator()(const Request& request, std::stop_token) {
  const std::lock_guard lock(m_mutex);
  Answers& answers = m_answers[request.command];
  if (answers.next.empty()) return answers.always;
  Reply reply = answers.next.front();
  answers.next.erase(answers.next.begin());
  return reply;
}

}  // namespace plm_client
