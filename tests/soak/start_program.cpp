#include "start_program.h"

#include <stdexcept>

#include "CStringHelper.h"

StartedProgram StartProgram(const std::wstring& program, const std::wstring& arguments) {
  std::wstring command = L"\"" + program + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started)) {
    throw std::runtime_error("cannot start " + CStringHelper::UnicodeToUTF8(program));
  }
  OwnHandle(started.hThread);
  return {OwnHandle(started.hProcess), started.dwProcessId};
}
