/// @file Prepared answers.
#pragma once

#include <map>
#include <mutex>
#include <stop_token>
#include <string>
#include <vector>

#include "plm_client/reply.h"
#include "plm_client/request.h"

namespace plm_client {

/// Answers for each command. A command without an answer gets the empty answer.
///
///     Script script;
///     Client client({}, std::ref(script));
class Script {
 public:
  /// Answers `command` with `reply` from now on.
  void Always(const std::string& command, Reply reply);

  /// Answers the next calls of `command` with `replies`, one after the other; then as before.
  void InTurn(const std::string& command, std::vector<Reply> replies);

  /// The handler that a Client takes.
  Reply operator()(const Request& request, std::stop_token stop);

 private:
  struct Answers {
    Reply always = Reply::Text("");
    std::vector<Reply> next;
  };

  std::mutex m_mutex;
  std::map<std::string, Answers> m_answers;
};

}  // namespace plm_client
