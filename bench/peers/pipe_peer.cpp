#include "peers/pipe_peer.h"

#include <objbase.h>

#include <array>
#include <stdexcept>

namespace {

void Check(bool good, const char* what) {
  if (!good) throw std::runtime_error(std::string(what) + ": error " + std::to_string(GetLastError()));
}

UniqueHandle Open(const std::wstring& path, DWORD flags) {
  UniqueHandle pipe = OwnHandle(
      CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, flags, nullptr));
  Check(pipe != nullptr, "the pipe cannot be opened");
  return pipe;
}

/// The number behind "id" in a request.
std::string_view IdOf(std::string_view request) {
  constexpr std::string_view kMember = "\"id\":";
  const std::size_t begin = request.find(kMember) + kMember.size();
  return request.substr(begin, request.find(',', begin) - begin);
}

}  // namespace

PipeServer::PipeServer(std::wstring name, std::string answer)
    : m_path(LR"(\\.\pipe\)" + name), m_answer(std::move(answer)), m_frame(FrameOf("1")) {
  constexpr DWORD kBuffer = 64 * 1024;
  m_pipe = OwnHandle(CreateNamedPipeW(m_path.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_WAIT, 1,
                                      kBuffer, kBuffer, 0, nullptr));
  Check(m_pipe != nullptr, "the pipe cannot be created");
  m_thread = std::jthread([this] { Serve(m_pipe.get()); });
}

/// The client must have closed its end before.
PipeServer::~PipeServer() = default;

std::string PipeServer::FrameOf(std::string_view id) const {
  std::string content = R"({"jsonrpc":"2.0","id":)";
  content.append(id).append(R"(,"result":{"answer":")").append(m_answer).append("\"}}");
  return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content;
}

void PipeServer::Serve(HANDLE pipe) const {
  ConnectNamedPipe(pipe, nullptr);
  std::array<char, 64 * 1024> request;
  std::string id = "1", other;
  const std::string* frame = &m_frame;
  for (;;) {
    DWORD size = 0;
    if (!ReadFile(pipe, request.data(), static_cast<DWORD>(request.size()), &size, nullptr) || size == 0)
      return;
    const std::string_view asked = IdOf({request.data(), size});
    if (asked != id) {
      other = FrameOf(id = asked);
      frame = &other;
    }
    DWORD written = 0;
    if (!WriteFile(pipe, frame->data(), static_cast<DWORD>(frame->size()), &written, nullptr)) return;
  }
}

BlockingExchange::BlockingExchange(const std::wstring& path) : m_pipe(Open(path, 0)) {}

void BlockingExchange::Run(std::string_view request, std::span<char> answer) {
  DWORD moved = 0;
  Check(WriteFile(m_pipe.get(), request.data(), static_cast<DWORD>(request.size()), &moved, nullptr),
        "write");
  while (!answer.empty()) {
    Check(ReadFile(m_pipe.get(), answer.data(), static_cast<DWORD>(answer.size()), &moved, nullptr), "read");
    answer = answer.subspan(moved);
  }
}

OverlappedExchange::OverlappedExchange(const std::wstring& path)
    : m_pipe(Open(path, FILE_FLAG_OVERLAPPED)),
      m_written(OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr))),
      m_read(OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr))) {}

void OverlappedExchange::Run(std::string_view request, std::span<char> answer) {
  OVERLAPPED writing{}, reading{};
  writing.hEvent = m_written.get();
  reading.hEvent = m_read.get();
  DWORD moved = 0;
  WriteFile(m_pipe.get(), request.data(), static_cast<DWORD>(request.size()), nullptr, &writing);
  Wait(writing, moved);
  while (!answer.empty()) {
    ReadFile(m_pipe.get(), answer.data(), static_cast<DWORD>(answer.size()), nullptr, &reading);
    Wait(reading, moved);
    answer = answer.subspan(moved);
  }
}

void OverlappedExchange::Wait(OVERLAPPED& operation, DWORD& moved) {
  DWORD signalled = 0;
  Check(SUCCEEDED(CoWaitForMultipleHandles(0, INFINITE, 1, &operation.hEvent, &signalled)), "wait");
  Check(GetOverlappedResult(m_pipe.get(), &operation, &moved, FALSE), "exchange");
}
