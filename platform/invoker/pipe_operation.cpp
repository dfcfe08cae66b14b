#include "pipe_operation.h"

#include "system_failure.h"

namespace invoker {
namespace {

constexpr wchar_t kFailure[] = L"the connection to the client failed";

}  // namespace

PipeOperation::PipeOperation(HANDLE pipe)
    : m_pipe(pipe), m_event(OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr))) {
  if (!m_event) throw SystemFailure(L"an event cannot be created");
}

PipeOperation::~PipeOperation() { Cancel(); }

void PipeOperation::Cancel() noexcept {
  if (!m_isPending) return;
  DWORD moved = 0;
  CancelIoEx(m_pipe, &m_overlapped);
  GetOverlappedResult(m_pipe, &m_overlapped, &moved, TRUE);
  m_isPending = false;
}

void PipeOperation::StartRead(std::span<char> buffer) {
  m_overlapped = {};
  m_overlapped.hEvent = m_event.get();
  CheckStarted(ReadFile(m_pipe, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr, &m_overlapped));
}

void PipeOperation::StartWrite(std::string_view bytes) {
  m_overlapped = {};
  m_overlapped.hEvent = m_event.get();
  CheckStarted(WriteFile(m_pipe, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &m_overlapped));
}

void PipeOperation::CheckStarted(BOOL completed) {
  if (!completed && GetLastError() != ERROR_IO_PENDING) throw PipeFailure(kFailure);
  m_isPending = true;
}

std::size_t PipeOperation::Finish() {
  DWORD moved = 0;
  m_isPending = false;
  if (!GetOverlappedResult(m_pipe, &m_overlapped, &moved, TRUE)) throw PipeFailure(kFailure);
  return moved;
}

}  // namespace invoker
