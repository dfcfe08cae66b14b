#include "child_process.h"

#include <stdexcept>

#include "killed_session.h"

namespace {

constexpr DWORD kTimeout = 60'000;  // ms
constexpr const wchar_t* kHold = L"--hold";

std::wstring ProgramPath() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

std::wstring EventName() { return L"tavo-file-held-" + std::to_wstring(GetCurrentProcessId()); }

/// Opens the file without sharing it, and waits until the process is ended.
int HoldFile(const std::wstring& path, const std::wstring& event) {
  const UniqueHandle file = OwnHandle(
      CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return 1;
  const UniqueHandle held = OwnHandle(OpenEventW(EVENT_MODIFY_STATE, FALSE, event.c_str()));
  SetEvent(held.get());
  Sleep(kTimeout);
  return 1;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::wstring>& arguments) {
  std::wstring command = L"\"" + ProgramPath() + L"\"";
  for (const std::wstring& argument : arguments) command += L" \"" + argument + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process)) {
    throw std::runtime_error("cannot start this program again");
  }
  const UniqueHandle thread = OwnHandle(process.hThread);
  m_process = OwnHandle(process.hProcess);
}

ChildProcess::~ChildProcess() {
  TerminateProcess(m_process.get(), 1);
  WaitForSingleObject(m_process.get(), kTimeout);
}

DWORD ChildProcess::Wait() const {
  if (WaitForSingleObject(m_process.get(), kTimeout) != WAIT_OBJECT_0) {
    throw std::runtime_error("the child process hangs");
  }
  DWORD code = 0;
  GetExitCodeProcess(m_process.get(), &code);
  return code;
}

FileHeldElsewhere::FileHeldElsewhere(const std::wstring& path)
    : m_held(OwnHandle(CreateEventW(nullptr, TRUE, FALSE, EventName().c_str()))),
      m_process({kHold, path, EventName()}) {
  if (WaitForSingleObject(m_held.get(), kTimeout) != WAIT_OBJECT_0) {
    throw std::runtime_error("the other process did not open the file");
  }
}

bool RunAsChild(const std::vector<std::wstring>& arguments, int& exit_code) {
  if (arguments.size() == 3 && arguments[0] == kHold) {
    exit_code = HoldFile(arguments[1], arguments[2]);
    return true;
  }
  if (arguments.size() == 6 && arguments[0] == kCoverAndDie) {
    exit_code = RunKilledSession(arguments);
    return true;
  }
  return false;
}
