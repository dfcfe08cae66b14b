#include "invoker/client_probe.h"

#include <windows.h>

#include <utility>

#include "client_connector.h"
#include "framing.h"
#include "message.h"
#include "pipe_connection.h"
#include "pipe_owner.h"
#include "system_failure.h"

namespace invoker {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Sends a request that every client answers, with a result or an error.
/// @throws NoAnswer if no frame comes back.
void Ping(UniqueHandle pipe, milliseconds timeout) {
  ServingWait wait(timeout);
  PipeConnection connection(std::move(pipe));
  const std::string request = MakeFrame(MakePing());
  if (!connection.Begin(request)) throw NoAnswer{L"the client has closed the connection"};
  connection.Exchange(request, wait);
}

/// Goes as far as it can; what it reached is in `probe`.
/// @throws NoAnswer with the reason why it ended there.
void Probe(ClientConfiguration configuration, milliseconds timeout, ClientProbe& probe) {
  probe.state = ClientState::kNotOpened;
  if (configuration.pipe.empty()) configuration.pipe = DefaultPipe();
  probe.pipe = PipePath(configuration.pipe);
  UniqueHandle pipe = TryToOpenPipe(probe.pipe);
  if (!pipe) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) probe.state = ClientState::kNoPipe;
    if (error == ERROR_PIPE_BUSY) probe.state = ClientState::kBusy;
    throw SystemFailure(L"the pipe " + probe.pipe + L" cannot be opened", error);
  }
  CheckIsPipe(pipe.get(), probe.pipe);
  probe.state = ClientState::kNotTrusted;
  CheckPipeOwner(pipe.get());
  CheckPipeSession(pipe.get());
  probe.state = ClientState::kSilent;
  const auto begin = steady_clock::now();
  Ping(std::move(pipe), timeout);
  probe.time = duration_cast<milliseconds>(steady_clock::now() - begin);
  probe.state = ClientState::kAnswers;
}

}  // namespace

ClientProbe ProbeClient(const ClientConfiguration& configuration, milliseconds timeout) {
  ClientProbe probe{};
  try {
    Probe(configuration, timeout, probe);
  } catch (const NoAnswer& failure) {
    probe.reason = failure.reason;
  }
  return probe;
}

}  // namespace invoker
