#include "client_program.h"

#include <gtest/gtest.h>

#include "program_folder.h"

namespace {

std::wstring PathOf(const std::wstring& name) {
  return name.find(L'\\') == std::wstring::npos ? InBin(name) : name;
}

}  // namespace

ClientProgram::ClientProgram(const wchar_t* name, const TempFolder& folder, const std::wstring& arguments)
    : m_folder(folder) {
  const UniqueHandle output = CreateFileFor(L"output.txt"), errors = CreateFileFor(L"errors.txt");
  const std::wstring program = PathOf(name);
  std::wstring command = L"\"" + program + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.get();
  startup.hStdError = errors.get();
  PROCESS_INFORMATION started{};
  EXPECT_TRUE(CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                             &startup, &started));
  m_process = OwnHandle(started.hProcess);
  OwnHandle(started.hThread);
}

ClientProgram::~ClientProgram() { TerminateProcess(m_process.get(), 99); }

std::optional<DWORD> ClientProgram::ExitCode() const {
  DWORD code = 0;
  if (WaitForSingleObject(m_process.get(), 20'000) != WAIT_OBJECT_0) return std::nullopt;
  GetExitCodeProcess(m_process.get(), &code);
  return code;
}

UniqueHandle ClientProgram::CreateFileFor(const wchar_t* name) const {
  SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
  return OwnHandle(CreateFileW(m_folder.Path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               &inheritable, CREATE_ALWAYS, 0, nullptr));
}
