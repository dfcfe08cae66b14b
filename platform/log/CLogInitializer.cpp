#include "CLogInitializer.h"

#include <windows.h>

#include <log4cplus/appender.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>

#include <atomic>
#include <exception>

#include "log/platform_log.h"
#include "log_configuration.h"

namespace log4cplus::internal {
// Defined in the library; its header is not for users.
extern DWORD tls_storage_key;
}  // namespace log4cplus::internal

namespace {
constinit std::atomic<bool> is_running = false;
constinit std::atomic<bool> is_failure_reported = false;

// Logs once in the debugger why there is no log: every command tries to start it.
void ReportToDebugger(const wchar_t* line) {
  if (!is_failure_reported.exchange(true)) OutputDebugStringW(line);
}

// Closing a file throws if its locale could not encode some text; the second attempt succeeds. In a
// destructor this exception would terminate the host.
void Close(log4cplus::Appender& appender) {
  for (int attempt = 0; attempt < 2 && !appender.isClosed(); ++attempt) {
    try {
      appender.close();
    } catch (const std::exception&) {
    }
  }
}

void CloseAppenders() {
  log4cplus::LoggerList loggers = log4cplus::Logger::getCurrentLoggers();
  loggers.push_back(log4cplus::Logger::getRoot());
  for (log4cplus::Logger& logger : loggers) {
    for (const log4cplus::SharedAppenderPtr& appender : logger.getAllAppenders()) Close(*appender);
  }
}

/// Ends the logging library when the DLL is unloaded, if it has begun. The library keeps data of each thread
/// that logs, and a slot of the system for them, of which a process has about a thousand. It cannot give them
/// back by itself, because as a static library of this compiler it is not told of the end.
class LoggingLibrary {
 public:
  LoggingLibrary() = default;
  LoggingLibrary(const LoggingLibrary&) = delete;
  LoggingLibrary& operator=(const LoggingLibrary&) = delete;
  ~LoggingLibrary() {
    if (log4cplus::internal::tls_storage_key == 0) return;
    log4cplus::threadCleanup();
    TlsFree(log4cplus::internal::tls_storage_key);
  }
};

// The first priority that a program may use: made before the library's own objects, so destroyed after them.
[[gnu::init_priority(101)]] LoggingLibrary logging_library;
}  // namespace

bool CLogInitializer::Initialized() noexcept { return is_running; }

bool CLogInitializer::Initialize(const std::wstring& folder, const std::wstring& application,
                                 const std::wstring& propertiesFile) noexcept {
  if (Initialized()) return true;
  if (folder.empty()) {
    ReportToDebugger(
        L"there is no log folder, because neither TAVO_HOME nor APPDATA is set; events go to the debugger\n");
    return false;
  }
  try {
    const std::vector<std::wstring> faults = ConfigureLog(folder, application, propertiesFile);
    m_isOwner = true;
    is_running = true;
    is_failure_reported = false;
    for (const std::wstring& fault : faults) LogPlatformError(fault);
    return true;
  } catch (...) {
    ReportToDebugger(L"the log cannot be started, probably for want of memory; events go to the debugger\n");
    return false;
  }
}

CLogInitializer::~CLogInitializer() {
  if (!m_isOwner) return;
  is_running = false;
  try {
    CloseAppenders();
    log4cplus::Logger::getDefaultHierarchy().resetConfiguration();
  } catch (...) {  // no failure may stop the host from unloading
  }
}
