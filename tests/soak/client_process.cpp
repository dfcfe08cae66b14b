#include "client_process.h"

#include <stdexcept>
#include <utility>

#include "file_size.h"
#include "module/add_in_dll.h"
#include "start_program.h"

namespace {

constexpr DWORD kLongestStart = 20'000;  // milliseconds

std::wstring ProgramPath() {
  const std::wstring dll = AddInDll::BuiltPath();
  return dll.substr(0, dll.rfind(L'\\')) + L"\\plm_client.exe";
}

}  // namespace

ClientProcess::ClientProcess(const std::wstring& pipe, const std::wstring& answers, std::wstring record)
    : m_pipePath(L"\\\\.\\pipe\\" + pipe),
      m_program(ProgramPath()),
      m_arguments(L"--quiet --pipe " + pipe + L" --answers \"" + answers + L"\" --record \"" + record +
                  L"\""),
      m_record(std::move(record)) {
  Start();
}

void ClientProcess::Start() {
  StartedProgram started = StartProgram(m_program, m_arguments);
  m_process = std::move(started.process);
  m_id = started.id;
  const ULONGLONG begin = GetTickCount64();
  while (!WaitNamedPipeW(m_pipePath.c_str(), 1)) {
    if (WaitForSingleObject(m_process.get(), 1) == WAIT_OBJECT_0 ||
        GetTickCount64() - begin > kLongestStart) {
      throw std::runtime_error("plm_client.exe does not serve its pipe");
    }
  }
}

void ClientProcess::Kill() {
  if (!m_process) return;
  TerminateProcess(m_process.get(), 1);
  WaitForSingleObject(m_process.get(), INFINITE);
  m_process.reset();
}

long long ClientProcess::RecordSize() const { return FileSize(m_record); }
