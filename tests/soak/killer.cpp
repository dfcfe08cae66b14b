#include "killer.h"

#include <stdexcept>
#include <string>

#include "program_folder.h"
#include "start_program.h"

namespace {

constexpr DWORD kLongestStart = 20'000;  // milliseconds

UniqueHandle MakeEvent(const std::wstring& name) {
  return OwnHandle(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
}

std::wstring EventName(const wchar_t* what) {
  return L"tavo-soak-" + std::to_wstring(GetCurrentProcessId()) + what;
}

}  // namespace

Killer::Killer(DWORD victim, std::chrono::microseconds delay)
    : m_ready(MakeEvent(EventName(L"-ready"))),
      m_struck(MakeEvent(EventName(L"-struck"))),
      m_process(StartProgram(BesideTests(L"soak_killer.exe"),
                             std::to_wstring(victim) + L" " + std::to_wstring(delay.count()) + L" " +
                                 EventName(L"-ready") + L" " + EventName(L"-struck"))
                    .process) {
  const HANDLE handles[] = {m_ready.get(), m_process.get()};
  if (WaitForMultipleObjects(2, handles, FALSE, kLongestStart) != WAIT_OBJECT_0) {
    throw std::runtime_error("soak_killer.exe does not start");
  }
}

Killer::~Killer() {
  Strike();
  WaitForSingleObject(m_process.get(), INFINITE);
}
