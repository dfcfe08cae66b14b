#include "CZALCmdInvoker.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

#include "client_connector.h"
#include "configuration/client_configuration.h"
#include "errors/caught_exception.h"
#include "framing.h"
#include "log/platform_log.h"
#include "message.h"
#include "module_services.h"
#include "no_answer.h"
#include "pipe_connection.h"
#include "serving_wait.h"

using invoker::ClientNotReached;
using invoker::NoAnswer;
using invoker::PipeConnection;
using invoker::ServingWait;

namespace {

/// Sets `busy` while a command is in progress.
class CommandInProgress {
 public:
  explicit CommandInProgress(std::atomic<bool>& busy) : m_busy(busy) {
    if (m_busy.exchange(true)) throw NoAnswer{L"another command is still waiting for its answer"};
  }
  CommandInProgress(const CommandInProgress&) = delete;
  CommandInProgress& operator=(const CommandInProgress&) = delete;
  ~CommandInProgress() { m_busy = false; }

 private:
  std::atomic<bool>& m_busy;
};

/// Why a command gets no answer, from the exception that is being handled.
std::wstring ReasonOfException() {
  try {
    throw;
  } catch (const NoAnswer& failure) {
    return failure.reason;
  } catch (...) {  // perhaps thrown by a window procedure of the host during the wait
    return CaughtException::Describe().text;
  }
}

void LogNoAnswer(const std::wstring& command) noexcept {
  try {
    LogPlatformError(L"PLM command [" + command + L"] got no answer: " + ReasonOfException());
  } catch (...) {  // no memory for the line: a failing log must not disturb the host
  }
}

}  // namespace

class CZALCmdInvoker::Impl {
 public:
  Impl(std::wstring name, std::wstring file, BusyFlag busy)
      : m_name(std::move(name)),
        m_file(file.empty() ? kClientFile : std::move(file)),
        m_busy(busy ? std::move(busy) : std::make_shared<std::atomic<bool>>(false)) {}

  std::wstring Invoke(const std::wstring& command, const std::wstring& json,
                      const CZALCommandOptions& options) {
    const CommandInProgress in_progress(*m_busy);  // also while the box is shown
    std::wstring reason;
    try {
      return Ask(command, json, options);
    } catch (const ClientNotReached& failure) {
      LogNoAnswer(command);
      if (!options.shows_box) return {};
      reason = failure.reason;
    }
    invoker::ShowClientNotReached(reason);
    return {};
  }

 private:
  std::wstring Ask(const std::wstring& command, const std::wstring& json, const CZALCommandOptions& options) {
    const std::uint64_t id = ++m_lastId;
    // Before connecting: a request that cannot be sent must not open a connection or start the client.
    const std::string request = invoker::MakeFrame(invoker::MakeRequest(id, command, json));
    ServingWait wait(options.timeout);
    std::unique_ptr<PipeConnection> connection = Begin(request, options.starts_client, wait);
    std::wstring answer = connection->Finish(request, id, wait);
    if (connection->IsUsable()) m_kept = std::move(connection);
    return answer;
  }

  /// Begins to send over the kept connection if it is still usable, else over a new one. A connection is kept
  /// only after an answer: a late answer may still arrive on one that failed.
  std::unique_ptr<PipeConnection> Begin(const std::string& request, bool starts_client, ServingWait& wait) {
    std::unique_ptr<PipeConnection> connection = std::move(m_kept);
    if (connection && connection->IsUsable() && connection->Begin(request)) return connection;
    connection.reset();  // first, for a client that serves one connection at a time
    connection =
        std::make_unique<PipeConnection>(invoker::ConnectToClient(m_name, m_file, starts_client, wait));
    if (!connection->Begin(request)) throw NoAnswer{L"the client has closed the connection"};
    return connection;
  }

  const std::wstring m_name;
  const std::wstring m_file;
  const BusyFlag m_busy;
  std::uint64_t m_lastId = 0;
  std::unique_ptr<PipeConnection> m_kept;
};

CZALCmdInvoker::CZALCmdInvoker(std::wstring name, std::wstring file, BusyFlag busy)
    : m_impl(std::make_unique<Impl>(std::move(name), std::move(file), std::move(busy))) {}

CZALCmdInvoker::~CZALCmdInvoker() = default;

std::wstring CZALCmdInvoker::Invoke(const std::wstring& command, std::wstring json,
                                    const CZALCommandOptions& options) {
  try {
    return m_impl->Invoke(command, json, options);
  } catch (...) {
    LogNoAnswer(command);
  }
  return {};
}
