/// @file The PLM client: serves the pipe and answers requests.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "plm_client/reply.h"
#include "plm_client/request.h"

namespace plm_client {

class PipeStream;

/// How the pipe is served.
struct Settings {
  /// The pipe's name without `\\.\pipe\`; empty for the default name of this user.
  std::wstring pipe{};
  /// How many hosts are served at the same time; for any other host the pipe is busy.
  unsigned instances = 4;
  /// Who owns the pipe and may open it, in the security descriptor definition language; empty: only the
  /// current user.
  std::wstring security{};
  /// The connection is closed when this many bytes have been read from it.
  std::size_t read_limit = static_cast<std::size_t>(-1);
};

/// `tavo-plm-client-` and the SID of the current user: the name under which a host looks for the client.
/// @throws std::runtime_error if the current user cannot be determined.
std::wstring DefaultPipeName();

/// Serves the pipe on its own threads during the lifetime of the object.
class Client {
 public:
  /// Decides the reply to a request. Called on a thread of the connection, for several connections at the
  /// same time; may wait for a person, but must return soon after a stop is requested. An exception is sent
  /// to the host as an error.
  using Handler = std::function<Reply(const Request&, std::stop_token)>;

  /// @throws std::runtime_error if the pipe cannot be created, for example because another client serves it.
  Client(const Settings& settings, Handler handler);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client();

  /// The pipe's full name.
  const std::wstring& PipePath() const { return m_path; }

  /// The requests so far.
  std::vector<Request> Requests() const;

  /// Waits until `count` requests have been received. @return false if `timeout` ends first.
  bool WaitForRequests(std::size_t count, std::chrono::milliseconds timeout) const;

  /// How many connections there were so far, and how many there are now.
  int ConnectionCount() const;
  int OpenConnectionCount() const;

  /// Whether the host of the connection with this number, which asked something, still waits for the answer.
  /// A host that gives up closes the connection.
  bool HostIsThere(int connection) const;

  /// Closes every connection; hosts can connect again.
  void Disconnect();

  /// Sends a frame with `message` over every connection, without a request.
  void SendUnasked(const std::string& message);

 private:
  void Serve(PipeStream& stream, std::stop_token stop);
  void ServeConnection(PipeStream& stream, int connection, std::stop_token stop);
  bool AnswerFrames(PipeStream& stream, std::string& bytes, int connection, std::stop_token stop);
  Reply Answer(Request& request, std::size_t content_start, std::stop_token stop);
  static bool Send(PipeStream& stream, const Reply& reply, std::uint64_t id);
  int BeginConnection(const PipeStream& stream);
  void EndConnection(int connection);
  void Record(const Request& request);

  const std::size_t m_readLimit;
  const Handler m_handler;
  const std::wstring m_path;

  mutable std::mutex m_mutex;
  mutable std::condition_variable m_recorded;
  std::vector<Request> m_requests;
  int m_connectionCount = 0;
  std::map<int, const PipeStream*> m_serving;  // by the connection's number

  std::vector<std::unique_ptr<PipeStream>> m_streams;
  std::vector<std::jthread> m_threads;
};

}  // namespace plm_client
