#include "pipe_stream.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace plm_client {
namespace {

constexpr std::size_t kChunkBytes = 64 * 1024;

UniqueHandle MakeEvent() {
  UniqueHandle event = OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!event) throw std::runtime_error("an event cannot be made");
  return event;
}

/// An overlapped operation with its own event.
struct Operation {
  Operation() { overlapped.hEvent = event.get(); }
  UniqueHandle event = MakeEvent();
  OVERLAPPED overlapped{};
};

}  // namespace

PipeStream::PipeStream(UniqueHandle pipe) : m_pipe(std::move(pipe)), m_interrupted(MakeEvent()) {}

bool PipeStream::Accept() {
  Operation operation;
  DWORD moved = 0;
  const BOOL started = ConnectNamedPipe(m_pipe.get(), &operation.overlapped);
  const bool already = !started && GetLastError() == ERROR_PIPE_CONNECTED;
  m_connected = already || Finish(started, operation.overlapped, moved);
  return m_connected;
}

void PipeStream::Disconnect() {
  DisconnectNamedPipe(m_pipe.get());
  const std::lock_guard lock(m_connectedMutex);
  m_connected = false;  // after that, for those who wait until the host's end is broken
}

void PipeStream::InterruptConnection() {
  const std::lock_guard lock(m_connectedMutex);
  if (m_connected) Interrupt();
}

bool PipeStream::Read(std::string& bytes, std::size_t limit) {
  std::array<char, kChunkBytes> chunk;
  Operation operation;
  DWORD moved = 0;
  const auto wanted = static_cast<DWORD>(std::min(limit, chunk.size()));
  const BOOL started = ReadFile(m_pipe.get(), chunk.data(), wanted, nullptr, &operation.overlapped);
  if (!Finish(started, operation.overlapped, moved)) return false;
  bytes.append(chunk.data(), moved);
  return true;
}

bool PipeStream::Write(std::string_view bytes, std::size_t piece_size) {
  Operation operation;
  while (!bytes.empty()) {
    DWORD moved = 0;
    const auto size = static_cast<DWORD>(std::min({bytes.size(), piece_size, kChunkBytes}));
    const BOOL started = WriteFile(m_pipe.get(), bytes.data(), size, nullptr, &operation.overlapped);
    if (!Finish(started, operation.overlapped, moved)) return false;
    bytes.remove_prefix(moved);
  }
  return true;
}

bool PipeStream::Pause(std::chrono::milliseconds time) const {
  return WaitForSingleObject(m_interrupted.get(), static_cast<DWORD>(time.count())) == WAIT_TIMEOUT;
}

/// Waits for an operation that was started; cancels it if an interruption comes first.
bool PipeStream::Finish(BOOL started, OVERLAPPED& operation, DWORD& moved) const {
  if (!started && GetLastError() != ERROR_IO_PENDING) return false;
  const HANDLE handles[] = {m_interrupted.get(), operation.hEvent};
  const bool interrupted = WaitForMultipleObjects(2, handles, FALSE, INFINITE) == WAIT_OBJECT_0;
  if (interrupted) CancelIoEx(m_pipe.get(), &operation);
  return GetOverlappedResult(m_pipe.get(), &operation, &moved, TRUE) && !interrupted;
}

}  // namespace plm_client
