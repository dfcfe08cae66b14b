#include "plm_client/client.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "frame.h"
#include "pipe_instance.h"
#include "pipe_stream.h"
#include "plm_client/json_text.h"

namespace plm_client {
namespace {

constexpr std::chrono::milliseconds kRetryInterval{10};
constexpr int kUnknownMethod = -32601;
constexpr int kInternalError = -32603;

/// The answer to a message that is not a request of the protocol.
Reply Refuse(const std::exception& failure) {
  return Reply::Message(R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":)" +
                        JsonString(failure.what()) + "}}");
}

}  // namespace

Client::Client(const Settings& settings, Handler handler)
    : m_readLimit(settings.read_limit),
      m_handler(std::move(handler)),
      m_path(LR"(\\.\pipe\)" + (settings.pipe.empty() ? DefaultPipeName() : settings.pipe)) {
  for (unsigned i = 0; i < settings.instances; ++i) {
    m_streams.push_back(std::make_unique<PipeStream>(
        MakePipeInstance(m_path, settings.security, settings.instances, i == 0)));
  }
  for (const auto& stream : m_streams) {
    m_threads.emplace_back([this, &stream = *stream](std::stop_token stop) { Serve(stream, stop); });
  }
}

Client::~Client() {
  for (std::jthread& thread : m_threads) thread.request_stop();
  for (const auto& stream : m_streams) stream->Interrupt();
}

std::vector<Request> Client::Requests() const {
  const std::lock_guard lock(m_mutex);
  return m_requests;
}

bool Client::WaitForRequests(std::size_t count, std::chrono::milliseconds timeout) const {
  std::unique_lock lock(m_mutex);
  return m_recorded.wait_for(lock, timeout, [&] { return m_requests.size() >= count; });
}

int Client::ConnectionCount() const {
  const std::lock_guard lock(m_mutex);
  return m_connectionCount;
}

int Client::OpenConnectionCount() const {
  return static_cast<int>(
      std::count_if(m_streams.begin(), m_streams.end(), [](const auto& s) { return s->IsConnected(); }));
}

bool Client::HostIsThere(int connection) const {
  const std::lock_guard lock(m_mutex);
  const auto stream = m_serving.find(connection);
  return stream != m_serving.end() && stream->second->HostIsThere();
}

void Client::Disconnect() {
  for (const auto& stream : m_streams) stream->InterruptConnection();
}

void Client::SendUnasked(const std::string& message) {
  const std::string frame = MakeFrame(message);
  for (const auto& stream : m_streams) {
    if (stream->IsConnected()) stream->Write(frame, frame.size());
  }
}

/// Serves one connection after another on one instance of the pipe.
void Client::Serve(PipeStream& stream, std::stop_token stop) {
  for (;;) {
    // Before `stop` is checked: an interruption that comes together with the stop must not get lost.
    stream.Resume();
    if (stop.stop_requested()) return;
    if (stream.Accept()) {
      const int connection = BeginConnection(stream);
      ServeConnection(stream, connection, stop);
      EndConnection(connection);
    } else {
      stream.Pause(kRetryInterval);
    }
    stream.Disconnect();
  }
}

void Client::ServeConnection(PipeStream& stream, int connection, std::stop_token stop) {
  std::string bytes;
  std::size_t left = m_readLimit;
  while (left > 0) {
    const std::size_t before = bytes.size();
    if (!stream.Read(bytes, left)) return;
    left -= bytes.size() - before;
    if (!AnswerFrames(stream, bytes, connection, stop)) return;
  }
}

/// Answers the complete frames at the start of `bytes` and removes them. @return whether the connection stays
/// open.
bool Client::AnswerFrames(PipeStream& stream, std::string& bytes, int connection, std::stop_token stop) {
  try {
    for (auto frame = FindFrame(bytes); frame && frame->end <= bytes.size(); frame = FindFrame(bytes)) {
      Request request{.frame = bytes.substr(0, frame->end), .connection = connection};
      bytes.erase(0, frame->end);
      const Reply reply = Answer(request, frame->content_start, stop);
      if (!Send(stream, reply, request.id)) return false;
    }
    return true;
  } catch (const std::runtime_error& failure) {  // the start of the next frame is unknown
    Send(stream, Refuse(failure).ThenDisconnect(), 0);
    return false;
  }
}

/// Reads the request of a frame and decides the reply; the content of the frame starts at `content_start`.
Reply Client::Answer(Request& request, std::size_t content_start, std::stop_token stop) {
  try {
    ReadRequest(std::string_view(request.frame).substr(content_start), request);
  } catch (const UnknownMethod& failure) {
    return Reply::Error(kUnknownMethod, failure.what());
  } catch (const std::runtime_error& failure) {
    return Refuse(failure);
  }
  Record(request);
  try {
    return m_handler(request, stop);
  } catch (const std::exception& failure) {
    return Reply::Error(kInternalError, failure.what());
  }
}

/// @return whether the connection stays open.
bool Client::Send(PipeStream& stream, const Reply& reply, std::uint64_t id) {
  if (reply.Delay().count() > 0 && !stream.Pause(reply.Delay())) return false;
  if (!stream.Write(reply.BytesFor(id), reply.PieceSize())) return false;
  if (reply.Disconnects()) stream.Flush();
  return !reply.Disconnects();
}

int Client::BeginConnection(const PipeStream& stream) {
  const std::lock_guard lock(m_mutex);
  m_serving[++m_connectionCount] = &stream;
  return m_connectionCount;
}

void Client::EndConnection(int connection) {
  const std::lock_guard lock(m_mutex);
  m_serving.erase(connection);
}

void Client::Record(const Request& request) {
  const std::lock_guard lock(m_mutex);
  m_requests.push_back(request);
  m_recorded.notify_all();
}

}  // namespace plm_client
