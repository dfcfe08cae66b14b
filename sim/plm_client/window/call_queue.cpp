#include "call_queue.h"

#include <chrono>
#include <utility>

namespace plm_window {
namespace {

constexpr std::chrono::milliseconds kLookAtHost{100};

}  // namespace

void Call::Answer(plm_client::Reply reply) {
  const std::lock_guard lock(m_mutex);
  if (m_hasEnded || m_reply) return;
  m_reply = std::move(reply);
  m_answered.notify_all();
}

bool Call::HasEnded() const {
  const std::lock_guard lock(m_mutex);
  return m_hasEnded;
}

plm_client::Reply CallQueue::Ask(const plm_client::Request& request, const std::stop_token& stop,
                                 const std::function<bool()>& host_is_there) {
  const auto call = std::make_shared<Call>(request);
  {
    const std::lock_guard lock(m_mutex);
    m_new.push_back(call);
  }
  m_notify();
  std::unique_lock lock(call->m_mutex);
  // The pipe cannot be awaited together with the answer: it is looked at now and then.
  while (!call->m_reply && !stop.stop_requested() && host_is_there()) {
    call->m_answered.wait_for(lock, kLookAtHost);
  }
  call->m_hasEnded = true;
  plm_client::Reply reply = call->m_reply ? std::move(*call->m_reply) : plm_client::Reply::Nothing();
  lock.unlock();
  m_notify();
  return reply;
}

std::vector<std::shared_ptr<Call>> CallQueue::TakeNew() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_new, {});
}

}  // namespace plm_window
