#include "pipe_connection.h"

#include <array>

#include "framing.h"
#include "message.h"
#include "pipe_operation.h"

namespace invoker {
namespace {

constexpr std::size_t kChunkBytes = 64 * 1024;

/// Sends a frame to the client, chunk by chunk.
class Sending {
 public:
  Sending(HANDLE pipe, std::string_view frame) : m_left(frame), m_operation(pipe) { StartChunk(); }

  bool IsPending() const { return m_operation.IsPending(); }
  HANDLE ChunkDone() const { return m_operation.Done(); }

  void Continue() {
    m_left.remove_prefix(m_operation.Finish());
    if (!m_left.empty()) StartChunk();
  }

 private:
  void StartChunk() { m_operation.StartWrite(m_left.substr(0, kChunkBytes)); }

  std::string_view m_left;
  PipeOperation m_operation;
};

/// Receives a frame from the client, chunk by chunk.
class Receiving {
 public:
  explicit Receiving(HANDLE pipe) : m_operation(pipe) { m_operation.StartRead(m_buffer); }

  bool IsComplete() const { return m_reader.IsComplete(); }
  HANDLE ChunkDone() const { return m_operation.Done(); }
  FrameReader& Reader() { return m_reader; }

  void Continue() {
    m_reader.Append({m_buffer.data(), m_operation.Finish()});
    if (!m_reader.IsComplete()) m_operation.StartRead(m_buffer);
  }

 private:
  FrameReader m_reader;
  std::array<char, kChunkBytes> m_buffer;
  PipeOperation m_operation;
};

}  // namespace

bool PipeConnection::IsUsable() const {
  DWORD unread = 0;
  return m_inSync && PeekNamedPipe(m_pipe.get(), nullptr, 0, nullptr, &unread, nullptr) && unread == 0;
}

void PipeConnection::AllowForeground() const {
  ULONG server = 0;
  if (GetNamedPipeServerProcessId(m_pipe.get(), &server) && server != 0) AllowSetForegroundWindow(server);
}

std::wstring PipeConnection::Ask(const std::string& request, std::uint64_t id, ServingWait& wait) {
  return ReadAnswer(Exchange(request, wait), id);
}

/// Sends and receives at the same time. Otherwise a client that begins to answer before it has read the whole
/// request would wait for this side, which waits for the client.
std::string PipeConnection::Exchange(const std::string& frame, ServingWait& wait) {
  Receiving answer(m_pipe.get());
  Sending request(m_pipe.get(), frame);
  while (!answer.IsComplete()) {
    if (!request.IsPending()) {
      wait.Until({answer.ChunkDone()});
      answer.Continue();
    } else if (wait.Until({request.ChunkDone(), answer.ChunkDone()}) == 0) {
      request.Continue();
    } else {
      answer.Continue();
    }
  }
  m_inSync = !request.IsPending() && !answer.Reader().HasSurplus();
  return answer.Reader().TakeContent();
}

}  // namespace invoker
