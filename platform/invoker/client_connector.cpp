#include "client_connector.h"

#include "client_program.h"
#include "configured_client.h"
#include "pipe_owner.h"
#include "system_failure.h"

namespace invoker {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr wchar_t kPipeFolder[] = LR"(\\.\pipe\)";
constexpr milliseconds kBusyTimeout{2'000};
constexpr milliseconds kPollInterval{20};

/// Opens the pipe; waits if it is busy. Null if it does not exist.
UniqueHandle Open(const std::wstring& path, ServingWait& wait) {
  const auto end = steady_clock::now() + kBusyTimeout;
  for (;;) {
    UniqueHandle pipe = TryToOpenPipe(path);
    if (pipe) return pipe;
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return nullptr;
    if (error != ERROR_PIPE_BUSY) throw SystemFailure(L"the pipe " + path + L" cannot be opened", error);
    if (steady_clock::now() >= end) throw NoAnswer{L"the pipe " + path + L" stayed busy for two seconds"};
    wait.Pause(kPollInterval);
  }
}

/// Starts the client and opens the pipe as soon as the client serves it.
UniqueHandle StartAndOpen(const ClientConfiguration& configuration, const std::wstring& path,
                          ServingWait& wait) {
  const UniqueHandle process = StartClientProgram(configuration.program);
  const auto end = steady_clock::now() + configuration.start_timeout;
  for (;;) {
    // Checked before the pipe, because a launcher may end as soon as the pipe exists.
    const bool ended = wait.Pause(milliseconds(0), process.get());
    if (UniqueHandle pipe = Open(path, wait)) return pipe;
    if (ended) throw NoAnswer{configuration.program + L" ended without serving the pipe " + path};
    if (steady_clock::now() >= end) {
      throw NoAnswer{configuration.program + L" did not serve the pipe " + path + L" within " +
                     std::to_wstring(configuration.start_timeout.count()) + L" ms"};
    }
    wait.Pause(kPollInterval, process.get());
  }
}

/// Opens the pipe, with the client's program if that is needed and allowed.
UniqueHandle OpenOrStart(const ClientConfiguration& configuration, const std::wstring& path,
                         bool starts_client, ServingWait& wait) {
  if (UniqueHandle pipe = Open(path, wait)) return pipe;
  const std::wstring missing = L"there is no pipe " + path;
  if (configuration.program.empty()) throw NoAnswer{missing + L", and no client program is configured"};
  if (!starts_client) throw NoAnswer{missing + L", and this command does not start the client program"};
  return StartAndOpen(configuration, path, wait);
}

/// Opens what is configured. @throws ClientNotReached.
UniqueHandle Reach(const std::wstring& name, const std::wstring& file, bool starts_client,
                   ServingWait& wait) {
  try {
    const ClientConfiguration configuration = ReadClientConfiguration(name, file);
    const std::wstring path = PipePath(configuration.pipe);
    UniqueHandle pipe = OpenOrStart(configuration, path, starts_client, wait);
    CheckIsPipe(pipe.get(), path);
    return pipe;
  } catch (const WaitEnded&) {
    throw;
  } catch (const NoAnswer& failure) {
    throw ClientNotReached{failure};
  }
}

}  // namespace

std::wstring PipePath(const std::wstring& name) { return kPipeFolder + name; }

UniqueHandle TryToOpenPipe(const std::wstring& path) {
  return OwnHandle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                               FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION,
                               nullptr));
}

void CheckIsPipe(HANDLE opened, const std::wstring& path) {
  if (GetFileType(opened) != FILE_TYPE_PIPE) throw NoAnswer{path + L" is not a pipe"};
}

UniqueHandle ConnectToClient(const std::wstring& name, const std::wstring& file, bool starts_client,
                             ServingWait& wait) {
  UniqueHandle pipe = Reach(name, file, starts_client, wait);
  CheckPipeOwner(pipe.get());
  CheckPipeSession(pipe.get());
  return pipe;
}

}  // namespace invoker
