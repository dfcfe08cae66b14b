#include "client_program.h"

#include <filesystem>

#include "base/system_path.h"
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

}  // namespace

UniqueHandle StartClientProgram(const std::wstring& program) {
  const std::filesystem::path path(program);
  if (!path.is_absolute()) throw NoAnswer{L"the client program " + program + L" is not a full path"};
  const std::wstring folder = path.parent_path().wstring();
  std::wstring command_line = L"\"" + program + L"\"";

  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  const NoSystemBoxes no_boxes;
  if (!CreateProcessW(SystemPath(program).c_str(), command_line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      folder.c_str(), &startup, &process)) {
    throw SystemFailure(L"the client program " + program + L" cannot be started");
  }
  OwnHandle(process.hThread);
  return OwnHandle(process.hProcess);
}

}  // namespace invoker
