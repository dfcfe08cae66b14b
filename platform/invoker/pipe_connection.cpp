#include "pipe_connection.h"

#include <algorithm>
#include <span>
#include <utility>

#include "framing.h"
#include "message.h"
#include "no_answer.h"

namespace invoker {
namespace {

// How much is sent or received before the thread serves the host's windows again.
constexpr std::size_t kChunkBytes = 1024 * 1024;

/// Sends a frame to the client, chunk by chunk, from the first one that is started.
class Sending {
 public:
  Sending(PipeOperation& operation, std::string_view frame) : m_operation(operation), m_left(frame) {}

  void StartChunk() { m_operation.StartWrite(m_left.substr(0, kChunkBytes)); }

  PipeOperation& Chunk() { return m_operation; }

  void Continue() {
    m_left.remove_prefix(m_operation.Finish());
    if (!m_left.empty()) StartChunk();
  }

 private:
  PipeOperation& m_operation;
  std::string_view m_left;
};

/// Receives a frame from the client, chunk by chunk. The first bytes are already being read into `first`.
class Receiving {
 public:
  Receiving(PipeOperation& operation, std::span<char> first) : m_operation(operation), m_first(first) {}

  PipeOperation& Chunk() { return m_operation; }
  FrameReader& Reader() { return m_reader; }

  void Continue() {
    const std::size_t count = m_operation.Finish();
    if (m_intoContent) {
      m_reader.Fill(count);
    } else {
      m_reader.Append({m_first.data(), count});
    }
    if (m_reader.IsComplete()) return;
    const std::span<char> rest = m_reader.Rest();
    m_intoContent = !rest.empty();
    m_operation.StartRead(m_intoContent ? rest.first(std::min(rest.size(), kChunkBytes)) : m_first);
  }

 private:
  PipeOperation& m_operation;
  const std::span<char> m_first;
  FrameReader m_reader;
  bool m_intoContent = false;
};

/// Waits until a chunk is sent or received, unless one is already. @return whether it is one that is sent.
bool AwaitSentChunk(const PipeOperation& sending, const PipeOperation& receiving, ServingWait& wait) {
  if (!sending.IsPending()) {
    if (!receiving.IsDone()) wait.Until({receiving.Done()});
    return false;
  }
  if (sending.IsDone() || receiving.IsDone()) return sending.IsDone();
  return wait.Until({sending.Done(), receiving.Done()}) == 0;
}

/// Cancels what is pending at the end of its lifetime, so that the system writes into no buffer that is gone.
class PendingGuard {
 public:
  explicit PendingGuard(PipeOperation& operation) : m_operation(operation) {}
  PendingGuard(const PendingGuard&) = delete;
  PendingGuard& operator=(const PendingGuard&) = delete;
  ~PendingGuard() { m_operation.Cancel(); }

 private:
  PipeOperation& m_operation;
};

}  // namespace

PipeConnection::PipeConnection(UniqueHandle pipe)
    : m_pipe(std::move(pipe)), m_reading(m_pipe.get()), m_writing(m_pipe.get()) {
  GetNamedPipeServerProcessId(m_pipe.get(), &m_server);
  ReadAhead();
}

bool PipeConnection::IsUsable() const { return m_reading.IsPending() && !m_reading.IsDone(); }

bool PipeConnection::Begin(std::string_view request) {
  if (m_server != 0) AllowSetForegroundWindow(m_server);
  try {
    Sending(m_writing, request).StartChunk();
  } catch (const NoAnswer&) {  // the client has closed the connection a moment ago
    return false;
  }
  return true;
}

std::wstring PipeConnection::Finish(std::string_view request, std::uint64_t id, ServingWait& wait) {
  std::string message = Exchange(request, wait);
  if (m_inSync) ReadAhead();
  return ReadAnswer(std::move(message), id);
}

void PipeConnection::ReadAhead() noexcept {
  try {
    m_reading.StartRead(m_first);
  } catch (...) {  // usually because the client has closed the connection: the next request sees it
  }
}

/// Sends and receives at the same time. Otherwise a client that begins to answer before it has read the whole
/// request would wait for this side, which waits for the client.
std::string PipeConnection::Exchange(std::string_view frame, ServingWait& wait) {
  const PendingGuard reading(m_reading);
  const PendingGuard writing(m_writing);
  if (!m_reading.IsPending()) m_reading.StartRead(m_first);  // tells why it could not be started before
  Receiving answer(m_reading, m_first);
  Sending request(m_writing, frame);
  while (!answer.Reader().IsComplete()) {
    bool has_more = true;
    if (AwaitSentChunk(request.Chunk(), answer.Chunk(), wait)) {
      request.Continue();
      has_more = request.Chunk().IsPending();
    } else {
      answer.Continue();
      has_more = !answer.Reader().IsComplete();
    }
    if (has_more) wait.Serve();  // also if the client is as fast as this side
  }
  m_inSync = !request.Chunk().IsPending() && !answer.Reader().HasSurplus();
  return answer.Reader().TakeContent();
}

}  // namespace invoker
