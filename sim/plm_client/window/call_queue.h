/// @file Brings the host's requests from the threads of the connections to the thread of the windows.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

#include "plm_client/reply.h"
#include "plm_client/request.h"

namespace plm_window {

/// A request that waits for its answer. Every method may be called on any thread.
class Call {
 public:
  explicit Call(plm_client::Request request) : m_request(std::move(request)) {}

  const plm_client::Request& Request() const { return m_request; }

  /// Answers the request, once; later answers are dropped.
  void Answer(plm_client::Reply reply);

  /// Whether nobody waits for the answer any more.
  bool HasEnded() const;

 private:
  friend class CallQueue;

  const plm_client::Request m_request;
  mutable std::mutex m_mutex;
  std::condition_variable m_answered;
  std::optional<plm_client::Reply> m_reply;
  bool m_hasEnded = false;
};

/// The requests that have come and that no window has taken yet.
class CallQueue {
 public:
  /// @param notify is called on a thread of a connection when a request has come or has ended.
  explicit CallQueue(std::function<void()> notify) : m_notify(std::move(notify)) {}

  /// Waits for the answer; ends early, without one, when a stop is requested or `host_is_there` says no.
  plm_client::Reply Ask(const plm_client::Request& request, const std::stop_token& stop,
                        const std::function<bool()>& host_is_there);

  /// The requests that came since the last call, in their order.
  std::vector<std::shared_ptr<Call>> TakeNew();

 private:
  std::function<void()> m_notify;
  std::mutex m_mutex;
  std::vector<std::shared_ptr<Call>> m_new;
};

}  // namespace plm_window
