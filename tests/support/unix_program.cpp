#include "unix_program.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>

#include "base/unique_handle.h"
#include "base/utf8.h"

namespace {

constexpr const wchar_t* kScript = L"shell.sh";
constexpr const wchar_t* kOutput = L"shell.out";
constexpr const wchar_t* kStatus = L"shell.status";
constexpr int kMostPauses = 300;
constexpr DWORD kPause = 100;  // ms

/// A file for the program's standard handles.
UniqueHandle OpenInheritable(const std::wstring& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  return OwnHandle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               &inheritable, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Sets all standard handles: otherwise, under Wine, the new process would take over the output of this
/// program.
void Start(const TempFolder& folder) {
  const UniqueHandle input = OpenInheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
  const UniqueHandle output = OpenInheritable(folder.Path(kOutput), GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = output.get();
  startup.hStdError = output.get();
  wchar_t command[] = L"\"Z:\\bin\\sh\" shell.sh";
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(L"Z:\\bin\\sh", command, nullptr, nullptr, TRUE, 0, nullptr, folder.Path().c_str(),
                      &startup, &process)) {
    throw std::runtime_error("cannot start /bin/sh: error " + std::to_string(GetLastError()));
  }
  OwnHandle(process.hThread);
  OwnHandle(process.hProcess);
}

}  // namespace

std::string UnixPath(const std::wstring& path) {
  std::string result = utf8::Encode<wchar_t>(path.substr(path.find(L':') + 1));
  std::ranges::replace(result, '\\', '/');
  return "'" + result + "'";
}

std::string RunShell(const TempFolder& folder, const std::string& line) {
  DeleteFileW(folder.Path(kStatus).c_str());
  // Wine returns no handle for waiting. The program has ended when the file with its status exists.
  folder.Write(kScript, "(" + line + ")\necho $? >shell.ended\nmv shell.ended shell.status\n");
  Start(folder);
  for (int wait = 0; !folder.Exists(kStatus); ++wait) {
    if (wait == kMostPauses) throw std::runtime_error("does not end: " + line);
    Sleep(kPause);
  }
  const std::string output = folder.Read(kOutput);
  if (folder.Read(kStatus) != "0\n") throw std::runtime_error("failed: " + line + "\n" + output);
  return output;
}
