#include "client_program.h"

#include <string_view>

#include "base/system_path.h"
#include "invoker/client_probe.h"
#include "system_failure.h"

namespace invoker {
namespace {

/// Keeps the system from showing a box about a drive without a disk, on this thread only.
class NoSystemBoxes {
 public:
  NoSystemBoxes() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &m_previous); }
  NoSystemBoxes(const NoSystemBoxes&) = delete;
  NoSystemBoxes& operator=(const NoSystemBoxes&) = delete;
  ~NoSystemBoxes() { SetThreadErrorMode(m_previous, nullptr); }

 private:
  DWORD m_previous = 0;
};

bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

/// The folder of `program` as a current folder: the system does not take the prefix `\\?\` there.
std::wstring FolderOf(std::wstring_view program) {
  constexpr std::wstring_view kPrefix = LR"(\\?\)";
  constexpr std::wstring_view kUncPrefix = LR"(\\?\UNC\)";
  std::wstring folder(program.substr(0, program.find_last_of(LR"(\/)")));
  if (folder.starts_with(kUncPrefix)) {
    folder.replace(0, kUncPrefix.size(), LR"(\\)");
  } else if (folder.starts_with(kPrefix)) {
    folder.erase(0, kPrefix.size());
  }
  if (folder.ends_with(L':')) folder += L'\\';  // without it, the drive's current folder
  return folder;
}

}  // namespace

bool IsFullProgramPath(const std::wstring& path) {
  if (path.size() < 3) return false;
  if (IsSeparator(path[0])) return IsSeparator(path[1]) && !IsSeparator(path[2]);
  return path[1] == L':' && IsSeparator(path[2]);
}

UniqueHandle StartClientProgram(const std::wstring& program) {
  if (!IsFullProgramPath(program)) throw NoAnswer{L"the client program " + program + L" is not a full path"};
  const std::wstring folder = FolderOf(program);
  std::wstring command_line = L"\"" + program + L"\"";

  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  const NoSystemBoxes no_boxes;
  if (!CreateProcessW(SystemPath(program).c_str(), command_line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      folder.c_str(), &startup, &process)) {
    // A folder that is not there is more than a wrong name, which the system calls it.
    const DWORD error = GetLastError();
    throw SystemFailure(L"the client program " + program + L" cannot be started",
                        error == ERROR_DIRECTORY ? ERROR_PATH_NOT_FOUND : error);
  }
  OwnHandle(process.hThread);
  return OwnHandle(process.hProcess);
}

}  // namespace invoker
