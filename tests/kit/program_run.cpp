#include "program_run.h"

#include <windows.h>

#include "base/unique_handle.h"

namespace {

// The program prints the stacks of its threads so long before its time is up.
constexpr unsigned kReport = 10;  // seconds

/// A job: whatever belongs to it ends with the object.
UniqueHandle MakeJob() {
  UniqueHandle job = OwnHandle(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

UniqueHandle OpenInheritable(const std::filesystem::path& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  return OwnHandle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                               disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::wstring CommandLine(const PlannedProgram& program, const std::filesystem::path& path) {
  const std::string options =
      " --gtest_filter=\"" + program.filter + "\" --gtest_output=xml:" + program.name + ".xml";
  return L"\"" + path.wstring() + L"\"" + std::wstring(options.begin(), options.end());
}

}  // namespace

Ending RunProgram(const PlannedProgram& program, const std::filesystem::path& programs,
                  const std::filesystem::path& results) {
  const std::filesystem::path path = programs / (program.name + ".exe");
  std::filesystem::remove(results / (program.name + ".xml"));
  const UniqueHandle input = OpenInheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
  const UniqueHandle output =
      OpenInheritable(results / (program.name + ".txt"), GENERIC_WRITE, CREATE_ALWAYS);
  const unsigned watch = program.seconds > kReport ? program.seconds - kReport : program.seconds;
  SetEnvironmentVariableW(L"TEST_SECONDS", std::to_wstring(watch).c_str());

  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = startup.hStdError = output.get();
  std::wstring command = CommandLine(program, path);
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                      results.c_str(), &startup, &started)) {
    return Ending::kNotStarted;
  }
  const UniqueHandle process = OwnHandle(started.hProcess), thread = OwnHandle(started.hThread);
  const UniqueHandle job = MakeJob();
  AssignProcessToJobObject(job.get(), process.get());
  ResumeThread(thread.get());
  if (WaitForSingleObject(process.get(), program.seconds * 1000) == WAIT_OBJECT_0) return Ending::kByItself;
  TerminateJobObject(job.get(), 1);
  WaitForSingleObject(process.get(), INFINITE);
  return Ending::kTimeUp;
}
