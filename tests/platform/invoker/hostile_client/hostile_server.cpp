#include "hostile_server.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <utility>

#include "pipe_instance.h"
#include "pipe_stream.h"

namespace {

constexpr unsigned kInstances = 4;
constexpr std::chrono::seconds kPatience{10};
constexpr std::string_view kHeaderEnd = "\r\n\r\n";

/// How many bytes `request` has when it is complete; what is certainly too many if its header is not whole.
std::size_t SizeOfRequest(std::string_view request) {
  constexpr std::string_view kStart = "Content-Length: ";
  const std::size_t end = request.find(kHeaderEnd);
  if (end == request.npos) return Conversation::kWhole;
  std::size_t content = 0;
  std::from_chars(request.data() + kStart.size(), request.data() + end, content);
  return end + kHeaderEnd.size() + content;
}

}  // namespace

struct Conversation::Instance {
  explicit Instance(UniqueHandle handle) : pipe(handle.get()), stream(std::move(handle)) {}

  HANDLE pipe;
  plm_client::PipeStream stream;
};

Conversation::Conversation(const std::wstring& pipe)
    : m_path(LR"(\\.\pipe\)" + pipe), m_current(NewInstance(true)), m_next(NewInstance(false)) {}

Conversation::~Conversation() = default;

std::shared_ptr<Conversation::Instance> Conversation::NewInstance(bool first) const {
  return std::make_shared<Instance>(plm_client::MakePipeInstance(m_path, L"", kInstances, first));
}

std::string Conversation::ReadRequest(std::size_t limit) {
  std::string bytes;
  while (!IsInterrupted()) {
    if (!m_isConnected) Accept();
    if (limit == 0 && AwaitBytes()) return bytes;
    while (limit > 0 && Read(bytes, std::min(limit, SizeOfRequest(bytes)) - bytes.size())) {
      if (bytes.size() >= std::min(limit, SizeOfRequest(bytes))) return bytes;
    }
    Close();
    bytes.clear();
  }
  return bytes;
}

void Conversation::Accept() {
  m_isConnected = m_current->stream.Accept();
  if (m_isConnected) ++m_connections;
}

/// @return whether the host has sent something; false if it has closed the connection.
bool Conversation::AwaitBytes() {
  DWORD available = 0;
  while (available == 0 && !IsInterrupted()) {
    if (!PeekNamedPipe(m_current->pipe, nullptr, 0, nullptr, &available, nullptr)) return false;
    if (available == 0) Sleep(1);
  }
  return available > 0;
}

bool Conversation::Read(std::string& bytes, std::size_t limit) {
  return m_current->stream.Read(bytes, limit);
}

bool Conversation::Write(std::string_view bytes, std::size_t piece_size) {
  return m_current->stream.Write(bytes, piece_size);
}

bool Conversation::WriteThrough(std::string_view bytes, std::size_t piece_size) {
  for (; !bytes.empty(); bytes.remove_prefix(std::min(piece_size, bytes.size()))) {
    if (!Write(bytes.substr(0, piece_size))) return false;
    m_current->stream.Flush();
  }
  return true;
}

void Conversation::Close() {
  std::shared_ptr<Instance> next = NewInstance(false);
  const std::lock_guard lock(m_mutex);
  if (m_isInterrupted) next->stream.Interrupt();
  m_current = std::exchange(m_next, std::move(next));
  m_isConnected = false;
}

void Conversation::Disconnect() {
  m_current->stream.Disconnect();
  Close();
}

void Conversation::AwaitHostsEnd() {
  std::string ignored;
  while (Read(ignored, kWhole)) ignored.clear();
  Close();
}

void Conversation::Interrupt() {
  const std::lock_guard lock(m_mutex);
  m_isInterrupted = true;
  m_current->stream.Interrupt();
  m_next->stream.Interrupt();
}

bool Conversation::IsInterrupted() {
  const std::lock_guard lock(m_mutex);
  return m_isInterrupted;
}

HostileServer::HostileServer(const std::wstring& pipe) : m_conversation(pipe), m_thread([this] { Run(); }) {}

HostileServer::~HostileServer() {
  {
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
  }
  m_changed.notify_all();
  m_conversation.Interrupt();
}

void HostileServer::Add(Act act) {
  const std::lock_guard lock(m_mutex);
  m_acts.push(std::move(act));
  m_changed.notify_all();
}

bool HostileServer::AwaitEnd() {
  std::unique_lock lock(m_mutex);
  return m_changed.wait_for(lock, kPatience, [this] { return m_acts.empty(); });
}

void HostileServer::Run() {
  std::unique_lock lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return m_isEnding || !m_acts.empty(); });
    if (m_acts.empty()) return;
    const Act act = m_acts.front();
    lock.unlock();
    act(m_conversation);
    lock.lock();
    m_acts.pop();
    m_changed.notify_all();
  }
}
