#include "pipe_operation.h"

#include "system_failure.h"

namespace invoker {
namespace {

constexpr wchar_t kFailure[] = L"the connection to the client failed";

}  // namespace

PipeOperation::PipeOperation(HANDLE pipe)
    : m_pipe(pipe), m_event(OwnHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr))) {
  if (!m_event) throw SystemFailure(L"an event cannot be made");
}

PipeOperation::~PipeOperation() {
  if (!m_underWay) return;
  DWORD moved = 0;
  CancelIoEx(m_pipe, &m_overlapped);
  GetOverlappedResult(m_pipe, &m_overlapped, &moved, TRUE);
}

void PipeOperation::StartRead(std::span<char> buffer) {
  m_overlapped = {};
  m_overlapped.hEvent = m_event.get();
  Started(ReadFile(m_pipe, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr, &m_overlapped));
}

void PipeOperation::StartWrite(std::string_view bytes) {
  m_overlapped = {};
  m_overlapped.hEvent = m_event.get();
  Started(WriteFile(m_pipe, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &m_overlapped));
}

void PipeOperation::Started(BOOL completed) {
  if (!completed && GetLastError() != ERROR_IO_PENDING) throw PipeFailure(kFailure);
  m_underWay = true;
}

std::size_t PipeOperation::Finish() {
  DWORD moved = 0;
  m_underWay = false;
  if (!GetOverlappedResult(m_pipe, &m_overlapped, &moved, TRUE)) throw PipeFailure(kFailure);
  return moved;
}

}  // namespace invoker
