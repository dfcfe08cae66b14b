#include "pipe_connection.h"

#include <algorithm>
#include <array>
#include <span>

#include "framing.h"
#include "message.h"

namespace invoker {
namespace {

// How much is sent or received before the thread serves the host's windows again.
constexpr std::size_t kChunkBytes = 1024 * 1024;

// Enough for most answers with their header.
constexpr std::size_t kFirstBytes = 16 * 1024;

/// Sends a frame to the client, chunk by chunk.
class Sending {
 public:
  Sending(PipeOperation& operation, std::string_view frame) : m_operation(operation), m_left(frame) {
    StartChunk();
  }

  PipeOperation& Chunk() { return m_operation; }

  void Continue() {
    m_left.remove_prefix(m_operation.Finish());
    if (!m_left.empty()) StartChunk();
  }

 private:
  void StartChunk() { m_operation.StartWrite(m_left.substr(0, kChunkBytes)); }

  PipeOperation& m_operation;
  std::string_view m_left;
};

/// Receives a frame from the client, chunk by chunk.
class Receiving {
 public:
  explicit Receiving(PipeOperation& operation) : m_operation(operation) { m_operation.StartRead(m_first); }

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
    m_operation.StartRead(m_intoContent ? rest.first(std::min(rest.size(), kChunkBytes))
                                        : std::span(m_first));
  }

 private:
  PipeOperation& m_operation;
  FrameReader m_reader;
  bool m_intoContent = false;
  std::array<char, kFirstBytes> m_first;
};

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
}

bool PipeConnection::IsUsable() const {
  DWORD unread = 0;
  return m_inSync && PeekNamedPipe(m_pipe.get(), nullptr, 0, nullptr, &unread, nullptr) && unread == 0;
}

void PipeConnection::AllowForeground() const {
  if (m_server != 0) AllowSetForegroundWindow(m_server);
}

std::wstring PipeConnection::Ask(const std::string& request, std::uint64_t id, ServingWait& wait) {
  return ReadAnswer(Exchange(request, wait), id);
}

/// Sends and receives at the same time. Otherwise a client that begins to answer before it has read the whole
/// request would wait for this side, which waits for the client.
std::string PipeConnection::Exchange(const std::string& frame, ServingWait& wait) {
  const PendingGuard reading(m_reading);
  const PendingGuard writing(m_writing);
  Receiving answer(m_reading);
  Sending request(m_writing, frame);
  while (!answer.Reader().IsComplete()) {
    const bool is_sending = request.Chunk().IsPending();
    if (is_sending && request.Chunk().IsDone()) {
      request.Continue();
    } else if (answer.Chunk().IsDone()) {
      answer.Continue();
      if (!answer.Reader().IsComplete()) wait.Serve();
    } else if (is_sending) {
      wait.Until({request.Chunk().Done(), answer.Chunk().Done()});
    } else {
      wait.Until({answer.Chunk().Done()});
    }
  }
  m_inSync = !request.Chunk().IsPending() && !answer.Reader().HasSurplus();
  return answer.Reader().TakeContent();
}

}  // namespace invoker
